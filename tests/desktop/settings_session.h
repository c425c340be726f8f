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

    /// As the user does who starts the program once more.
    void startAgain() const { outputOf({velmoProgram}, environment_); }

    void openSettings() {
        startAgain();
        ASSERT_TRUE(eventually([&] { return settingsWindow().has_value(); }));
    }
    void closeSettings() const {
        const auto window = settingsWindow();
        ASSERT_TRUE(window.has_value());
        closeWindow(*window);
        ASSERT_TRUE(eventually([&] { return !settingsWindow(); }));
    }
};

}  // namespace velmo::desktop
