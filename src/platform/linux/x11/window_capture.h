#pragma once

#include "screen_capture.h"

namespace velmo::x11 {

/// Pictures of windows on an X server, which shows every client all of them: consent is never missing.
class WindowCapture : public ScreenCapture {
public:
    bool preflightAccess() const override { return true; }
    bool requestAccess() override { return preflightAccess(); }
};

}  // namespace velmo::x11
