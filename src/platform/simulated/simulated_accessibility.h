#pragma once

#include "accessibility.h"

namespace velmo {

/// Trusted at first.
class SimulatedAccessibility : public Accessibility {
public:
    bool isProcessTrusted() const override { return trusted_; }
    bool isProcessTrusted(bool prompts) override {
        if (prompts && !trusted_)
            ++promptCount_;
        return trusted_;
    }

    void setTrusted(bool trusted) { trusted_ = trusted; }
    /// How often the user was asked.
    int promptCount() const { return promptCount_; }

private:
    bool trusted_ = true;
    int promptCount_ = 0;
};

}  // namespace velmo
