#include "settings_by_keyboard.h"

namespace velmo::desktop {

namespace {

/// The desktop's own programs note how they were started.
class SettingsOnGnome : public SettingsByKeyboard {
protected:
    void prepareSession() override {
        installNotingPrograms({"gnome-control-center", "gnome-session-quit"});
        environment_["XDG_CURRENT_DESKTOP"] = "GNOME";
    }
    void pressStop(int stop) {
        for (int passed = 0; passed < stop; ++passed)
            next();
        press("space");
    }
};

TEST_F(SettingsOnGnome, ClockOptionsAreTheDesktopsOwn) {
    goToTab(2);
    pressStop(4);
    EXPECT_TRUE(eventually([&] { return notedStarts() == "gnome-control-center datetime\n"; }))
        << notedStarts();
}

TEST_F(SettingsOnGnome, PermissionsOpenTheDesktopsPrivacySettings) {
    goToTab(3);
    pressStop(3);
    EXPECT_TRUE(eventually([&] { return notedStarts() == "gnome-control-center privacy\n"; }))
        << notedStarts();
    pressStop(1);
    EXPECT_TRUE(eventually([&] {
        return notedStarts() == "gnome-control-center privacy\ngnome-control-center privacy\n";
    })) << notedStarts();
}

TEST_F(SettingsOnGnome, LogOutAsksTheSessionManager) {
    goToTab(4);
    pressStop(2);
    EXPECT_TRUE(eventually([&] { return notedStarts() == "gnome-session-quit --logout\n"; }))
        << notedStarts();
}

}  // namespace

}  // namespace velmo::desktop
