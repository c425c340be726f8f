#pragma once

#include "screen_capture.h"

#include <cstddef>

namespace velmo {

/// Access is granted at first.
class SimulatedScreenCapture : public ScreenCapture {
public:
    bool preflightAccess() const override { return granted_; }
    bool requestAccess() override {
        ++requestCount_;
        granted_ = granted_ || consents_;
        return granted_;
    }

    void setGranted(bool granted) { granted_ = granted; }
    /// Whether the user grants access when asked for it.
    void setConsents(bool consents) { consents_ = consents; }
    std::size_t requestCount() const { return requestCount_; }

private:
    bool granted_ = true;
    bool consents_ = false;
    std::size_t requestCount_ = 0;
};

}  // namespace velmo
