#pragma once

#include "lifetime.h"
#include "macos/screen_capture_kit/sc_window.h"
#include "screen_capture.h"

#include <map>

namespace velmo::macos {

class MacosScreenCapture : public ScreenCapture {
public:
    bool preflightAccess() const override;
    bool requestAccess() override;
    void getShareableWindows(bool onScreenWindowsOnly,
                             std::function<void(std::optional<WindowNumbers>)> completion) override;
    /// Only windows that the last answer of `getShareableWindows` named can be pictured.
    void captureWindow(std::uint32_t windowNumber, const CaptureConfiguration& configuration,
                       std::function<void(std::optional<Bitmap>)> completion) override;

private:
    std::map<std::uint32_t, SCWindow> windows_;
    Lifetime lifetime_;
};

}  // namespace velmo::macos
