#pragma once

#include "screen_capture.h"

namespace velmo::x11 {

/// Pictures of windows on an X server, which shows every client all of them: consent is never missing.
class WindowCapture : public ScreenCapture {
public:
    bool preflightAccess() const override { return true; }
    bool requestAccess() override { return preflightAccess(); }
    void getShareableWindows(bool /*onScreenWindowsOnly*/,
                             std::function<void(std::optional<WindowNumbers>)> /*completion*/) override {}
    void captureWindow(std::uint32_t /*windowNumber*/, const CaptureConfiguration& /*configuration*/,
                       std::function<void(std::optional<Bitmap>)> /*completion*/) override {}
};

}  // namespace velmo::x11
