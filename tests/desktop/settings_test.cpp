#include "settings_session.h"
#include "window_managers.h"

#include <filesystem>

namespace velmo::desktop {

namespace {

using SettingsWindow = SettingsSession;

TEST_F(SettingsWindow, FirstLaunchOpensItAndTheNextDoesNot) {
    std::filesystem::remove(defaultsFile());
    startWindowManager();
    startVelmo();
    ASSERT_TRUE(eventually([&] { return settingsWindow().has_value(); }));
    EXPECT_EQ(x().area(*settingsWindow())->width, 540);
    EXPECT_EQ(x().area(*settingsWindow())->height, 500);
    stopVelmo();
    startVelmo();
    EXPECT_TRUE(stays([&] { return !settingsWindow(); }, milliseconds(700)));
}

TEST_F(SettingsWindow, SecondRequestShowsTheSameWindow) {
    startWindowManager();
    startVelmo();
    EXPECT_FALSE(settingsWindow());
    openSettings();
    const auto first = *settingsWindow();
    startAgain();
    EXPECT_TRUE(stays([&] { return settingsWindow() == first; }, milliseconds(500)));
    // Closed by the user, as the window manager does it.
    outputOf({"wmctrl", "-i", "-c", std::to_string(first)}, environment_);
    ASSERT_TRUE(eventually([&] { return !settingsWindow(); }));
    openSettings();
    EXPECT_EQ(*settingsWindow(), first);
}

TEST_F(SettingsWindow, HasTheIconOfTheProgramInEachSize) {
    startWindowManager();
    startVelmo();
    openSettings();
    const auto numbers = x().cardinals(*settingsWindow(), "_NET_WM_ICON");
    std::vector<std::uint32_t> sides;
    // Width and height, then the pixels. The line in the middle is red.
    for (std::size_t begin = 0; begin + 1 < numbers.size();) {
        const auto side = numbers[begin];
        ASSERT_EQ(numbers[begin + 1], side);
        ASSERT_LE(begin + 2 + side * side, numbers.size());
        const auto middle = numbers[begin + 2 + side * side / 2 + side / 2];
        EXPECT_EQ(middle >> 24, 0xffU);
        EXPECT_GT(middle >> 16 & 0xff, (middle >> 8 & 0xff) + 0x30) << "red";
        sides.push_back(side);
        begin += 2 + side * side;
    }
    EXPECT_EQ(sides, (std::vector<std::uint32_t>{16, 32, 48, 128}));
}

TEST_F(SettingsWindow, PlaceIsRememberedOverARestart) {
    startWindowManager();
    startVelmo();
    openSettings();
    outputOf({"wmctrl", "-i", "-r", std::to_string(*settingsWindow()), "-e", "0,131,97,-1,-1"}, environment_);
    ASSERT_TRUE(eventually([&] { return std::abs(x().area(*settingsWindow())->x - 131) < 30; }));
    const auto place = *x().area(*settingsWindow());
    ASSERT_TRUE(eventually([&] { return readDefaults().contains("windowPlace.Velmo.SettingsWindow"); }));
    stopVelmo();
    startVelmo();
    openSettings();
    EXPECT_TRUE(eventually([&] { return x().area(*settingsWindow())->x == place.x; }));
    EXPECT_EQ(x().area(*settingsWindow())->y, place.y);
}

TEST_F(SettingsWindow, PlaceIsRememberedOnceTheUserHasMovedIt) {
    const auto isRemembered = [&] { return readDefaults().contains("windowPlace.Velmo.SettingsWindow"); };
    startWindowManager();
    startVelmo();
    openSettings();
    EXPECT_TRUE(stays([&] { return !isRemembered(); }, milliseconds(800)));
    ASSERT_NO_FATAL_FAILURE(closeSettings());
    openSettings();
    EXPECT_TRUE(stays([&] { return !isRemembered(); }, milliseconds(800)));
    const auto place = *x().area(*settingsWindow());
    outputOf({"wmctrl", "-i", "-r", std::to_string(*settingsWindow()), "-e",
              "0," + std::to_string(place.x + 10) + "," + std::to_string(place.y) + ",-1,-1"},
             environment_);
    EXPECT_TRUE(eventually(isRemembered));
    ASSERT_NO_FATAL_FAILURE(closeSettings());
    EXPECT_TRUE(isRemembered());
}

TEST_F(SettingsWindow, PlaceWhereItsTitleCouldNotBeDraggedIsForgotten) {
    startWindowManager();
    const auto leftEdgeFor = [&](const char* remembered) {
        writeDefaults({{"windowPlace.Velmo.SettingsWindow", remembered}});
        startVelmo();
        openSettings();
        const int left = x().area(*settingsWindow())->x;
        stopVelmo();
        return left;
    };
    EXPECT_NEAR(leftEdgeFor("1220 200"), 1220, 8);
    EXPECT_NEAR(leftEdgeFor("1240 200"), (1280 - 540) / 2, 8) << "too little of it could be seen";
    EXPECT_NEAR(leftEdgeFor("-480 200"), -480, 8);
    EXPECT_NEAR(leftEdgeFor("-500 200"), (1280 - 540) / 2, 8);
    EXPECT_NEAR(leftEdgeFor("2147483647 200"), (1280 - 540) / 2, 8) << "no window can be there";
    EXPECT_NEAR(leftEdgeFor("1220"), (1280 - 540) / 2, 8);
}

class SettingsUnder : public SettingsWindow, public testing::WithParamInterface<std::string> {};

TEST_P(SettingsUnder, ComesToTheFrontOfWhatTheUserWorksWith) {
    startWindowManagerNamed(GetParam());
    startVelmo();
    const auto other = startOrdinaryWindow();
    const auto workInIt = [&] {
        // Where the settings do not cover it.
        const auto place = *x().area(other);
        xdotool({"mousemove", std::to_string(place.x + 10), std::to_string(place.y + 40), "click", "1"});
        ASSERT_TRUE(eventually([&] { return activeWindow() == other; }));
    };
    // Long before the user asks for the settings.
    click(toggle());
    workInIt();
    openSettings();
    EXPECT_TRUE(eventually([&] { return activeWindow() == *settingsWindow(); }));
    workInIt();
    startAgain();
    EXPECT_TRUE(eventually([&] { return activeWindow() == *settingsWindow(); }));
}

TEST_P(SettingsUnder, ComesToTheWorkspaceThatTheUserLooksAt) {
    startWindowManagerNamed(GetParam());
    startVelmo();
    openSettings();
    ASSERT_TRUE(eventually([&] { return activeWindow() == *settingsWindow(); }));
    const auto workspace = [&] { return x().cardinals(x().root(), "_NET_CURRENT_DESKTOP").front(); };
    ASSERT_EQ(workspace(), 0U);
    const std::vector<std::string> leave = GetParam() == "i3"
                                               ? std::vector<std::string>{"i3-msg", "workspace", "2"}
                                               : std::vector<std::string>{"wmctrl", "-s", "1"};
    outputOf(leave, environment_);
    ASSERT_TRUE(eventually(
        [&] { return workspace() == 1U && activeWindow() != x().windowTitled("Velmo Settings"); }));
    startAgain();
    EXPECT_TRUE(eventually([&] { return settingsWindow() && activeWindow() == *settingsWindow(); }));
    EXPECT_EQ(x().cardinals(*settingsWindow(), "_NET_WM_DESKTOP").front(), workspace());
    EXPECT_TRUE(GetParam() == "i3" || workspace() == 1U);
}

TEST_P(SettingsUnder, HasTheKeyboardThatTheCalendarHadBefore) {
    startWindowManagerNamed(GetParam());
    writeDefaults(clockDefaults());
    startVelmo();
    openSettings();
    const auto calendar = [&] { return x().windowTitled("Velmo.Popover").value_or(XCB_WINDOW_NONE); };
    // Which of two times is the later one is a matter of a millisecond.
    for (int round = 0; round < 5; ++round) {
        ASSERT_NO_FATAL_FAILURE(closeSettings());
        click(*x().windowTitled("Velmo.Clock"));
        ASSERT_TRUE(
            eventually([&] { return x().isViewable(calendar()) && x().keyboardOwner() == calendar(); }));
        ASSERT_TRUE(comesToRest());
        xdotool({"key", "Escape"});
        ASSERT_TRUE(eventually([&] { return !x().isViewable(calendar()); }));
        openSettings();
        EXPECT_TRUE(eventually([&] { return x().keyboardOwner() == *settingsWindow(); })) << round;
    }
}

INSTANTIATE_TEST_SUITE_P(WindowManagers, SettingsUnder, windowManagers,
                         [](const auto& test) { return test.param; });

}  // namespace

}  // namespace velmo::desktop
