#include "hidden_items/other_app_menu.h"

#include "platform/simulated/simulated_desktop.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

class OtherAppMenu : public testing::Test {
protected:
    static WindowListEntry menu() {
        WindowListEntry entry;
        entry.layer = 101;
        entry.ownerPID = 7;
        entry.bounds = {0, 26, 100, 200};
        return entry;
    }

    bool isOpenWith(const WindowListEntry& entry) {
        desktop_.windowServer().removeAllWindows();
        desktop_.windowServer().addWindow(entry);
        return isOtherAppMenuOpen(desktop_.platform());
    }

    SimulatedDesktop desktop_;
};

TEST_F(OtherAppMenu, IsAbsentOnAQuietDesktop) {
    desktop_.statusBar().addOther({"mail", 7, "Mail", {}, 24});
    EXPECT_FALSE(isOtherAppMenuOpen(desktop_.platform()));
}

TEST_F(OtherAppMenu, IsSeenAmongOtherWindows) {
    WindowListEntry other;
    for (int i = 0; i < 3; ++i) {
        other.layer = 102 - i;
        desktop_.windowServer().addWindow(other);
    }
    EXPECT_FALSE(isOtherAppMenuOpen(desktop_.platform()));
    desktop_.windowServer().addWindow(menu());
    EXPECT_TRUE(isOtherAppMenuOpen(desktop_.platform()));
}

TEST_F(OtherAppMenu, IsAtItsLayer) {
    auto entry = menu();
    for (const std::int64_t layer : {100, 102, 25, 0}) {
        entry.layer = layer;
        EXPECT_FALSE(isOpenWith(entry)) << layer;
    }
}

TEST_F(OtherAppMenu, IsNotTheProgramsOwn) {
    auto entry = menu();
    entry.ownerPID = desktop_.processInfo().processIdentifier();
    EXPECT_FALSE(isOpenWith(entry));
    desktop_.processInfo().setProcessIdentifier(8);
    EXPECT_TRUE(isOpenWith(entry));
}

TEST_F(OtherAppMenu, IsHigherThanTwentyPoints) {
    auto entry = menu();
    entry.bounds->height = 20;
    EXPECT_FALSE(isOpenWith(entry));
    entry.bounds->height = 20.1;
    EXPECT_TRUE(isOpenWith(entry));
}

TEST_F(OtherAppMenu, DoesNotCountWithoutLayerOwnerOrBounds) {
    for (int missing = 0; missing < 3; ++missing) {
        auto entry = menu();
        if (missing == 0)
            entry.layer.reset();
        if (missing == 1)
            entry.ownerPID.reset();
        if (missing == 2)
            entry.bounds.reset();
        EXPECT_FALSE(isOpenWith(entry)) << missing;
    }
}

TEST_F(OtherAppMenu, IsAbsentWhereTheWindowServerDoesNotAnswer) {
    desktop_.windowServer().addWindow(menu());
    desktop_.windowServer().setAvailable(false);
    EXPECT_FALSE(isOtherAppMenuOpen(desktop_.platform()));
}

}  // namespace
}  // namespace velmo
