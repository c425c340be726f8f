#pragma once

#include "desktop_session.h"

namespace velmo::desktop {

/// A display on which Velmo runs beside a window manager.
class RunningSession : public DesktopSession {
protected:
    void SetUp() override {
        DesktopSession::SetUp();
        startServer();
        startWindowManager();
        startVelmo();
    }
};

}  // namespace velmo::desktop
