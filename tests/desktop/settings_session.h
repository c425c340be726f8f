#pragma once

#include "built_files.h"
#include "desktop_session.h"

namespace velmo::desktop {

/// A session whose user has the settings open.
class SettingsSession : public DesktopSession {
protected:
    void SetUp() override {
        DesktopSession::SetUp();
        startServer();
    }

    std::optional<xcb_window_t> settings() const {
        const auto window = x().windowTitled("Velmo Settings");
        return window && x().isViewable(*window) ? window : std::nullopt;
    }

    /// As the user does who starts the program once more.
    void startAgain() const { outputOf({velmoProgram}, environment_); }

    void openSettings() {
        startAgain();
        ASSERT_TRUE(eventually([&] { return settings().has_value(); }));
    }

    xcb_window_t activeWindow() const {
        const auto active = x().cardinals(x().root(), "_NET_ACTIVE_WINDOW");
        return active.empty() ? xcb_window_t{XCB_WINDOW_NONE} : active.front();
    }
};

}  // namespace velmo::desktop
