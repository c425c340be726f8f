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
    ASSERT_TRUE(eventually([&] { return settings().has_value(); }));
    EXPECT_EQ(x().area(*settings())->width, 540);
    EXPECT_EQ(x().area(*settings())->height, 500);
    stopVelmo();
    startVelmo();
    EXPECT_TRUE(stays([&] { return !settings(); }, milliseconds(700)));
}

TEST_F(SettingsWindow, SecondRequestShowsTheSameWindow) {
    startWindowManager();
    startVelmo();
    EXPECT_FALSE(settings());
    openSettings();
    const auto first = *settings();
    startAgain();
    EXPECT_TRUE(stays([&] { return settings() == first; }, milliseconds(500)));
    // Closed by the user, as the window manager does it.
    outputOf({"wmctrl", "-i", "-c", std::to_string(first)}, environment_);
    ASSERT_TRUE(eventually([&] { return !settings(); }));
    openSettings();
    EXPECT_EQ(*settings(), first);
}

TEST_F(SettingsWindow, HasTheIconOfTheProgramInEachSize) {
    startWindowManager();
    startVelmo();
    openSettings();
    const auto numbers = x().cardinals(*settings(), "_NET_WM_ICON");
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
    outputOf({"wmctrl", "-i", "-r", std::to_string(*settings()), "-e", "0,131,97,-1,-1"}, environment_);
    ASSERT_TRUE(eventually([&] { return std::abs(x().area(*settings())->x - 131) < 30; }));
    const auto place = *x().area(*settings());
    ASSERT_TRUE(eventually([&] { return readDefaults().contains("windowPlace.Velmo.SettingsWindow"); }));
    stopVelmo();
    startVelmo();
    openSettings();
    EXPECT_TRUE(eventually([&] { return x().area(*settings())->x == place.x; }));
    EXPECT_EQ(x().area(*settings())->y, place.y);
}

TEST_F(SettingsWindow, PlaceIsRememberedOnceTheUserHasMovedIt) {
    const auto isRemembered = [&] { return readDefaults().contains("windowPlace.Velmo.SettingsWindow"); };
    const auto close = [&] {
        outputOf({"wmctrl", "-i", "-c", std::to_string(*settings())}, environment_);
        ASSERT_TRUE(eventually([&] { return !settings(); }));
    };
    startWindowManager();
    startVelmo();
    openSettings();
    EXPECT_TRUE(stays([&] { return !isRemembered(); }, milliseconds(800)));
    close();
    openSettings();
    EXPECT_TRUE(stays([&] { return !isRemembered(); }, milliseconds(800)));
    const auto place = *x().area(*settings());
    outputOf({"wmctrl", "-i", "-r", std::to_string(*settings()), "-e",
              "0," + std::to_string(place.x + 10) + "," + std::to_string(place.y) + ",-1,-1"},
             environment_);
    EXPECT_TRUE(eventually(isRemembered));
    close();
    EXPECT_TRUE(isRemembered());
}

TEST_F(SettingsWindow, PlaceWhereItsTitleCouldNotBeDraggedIsForgotten) {
    startWindowManager();
    const auto leftEdgeFor = [&](const char* remembered) {
        writeDefaults({{"windowPlace.Velmo.SettingsWindow", remembered}});
        startVelmo();
        openSettings();
        const int left = x().area(*settings())->x;
        stopVelmo();
        return left;
    };
    EXPECT_NEAR(leftEdgeFor("1220 200"), 1220, 8);
    EXPECT_NEAR(leftEdgeFor("1240 200"), (1280 - 540) / 2, 8) << "too little of it could be seen";
    EXPECT_NEAR(leftEdgeFor("-480 200"), -480, 8);
    EXPECT_NEAR(leftEdgeFor("-500 200"), (1280 - 540) / 2, 8);
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
    EXPECT_TRUE(eventually([&] { return activeWindow() == *settings(); }));
    workInIt();
    startAgain();
    EXPECT_TRUE(eventually([&] { return activeWindow() == *settings(); }));
}

TEST_P(SettingsUnder, ComesToTheWorkspaceThatTheUserLooksAt) {
    startWindowManagerNamed(GetParam());
    startVelmo();
    openSettings();
    ASSERT_TRUE(eventually([&] { return activeWindow() == *settings(); }));
    const auto workspace = [&] { return x().cardinals(x().root(), "_NET_CURRENT_DESKTOP").front(); };
    ASSERT_EQ(workspace(), 0U);
    const std::vector<std::string> leave = GetParam() == "i3"
                                               ? std::vector<std::string>{"i3-msg", "workspace", "2"}
                                               : std::vector<std::string>{"wmctrl", "-s", "1"};
    outputOf(leave, environment_);
    ASSERT_TRUE(eventually(
        [&] { return workspace() == 1U && activeWindow() != x().windowTitled("Velmo Settings"); }));
    startAgain();
    EXPECT_TRUE(eventually([&] { return settings() && activeWindow() == *settings(); }));
    EXPECT_EQ(x().cardinals(*settings(), "_NET_WM_DESKTOP").front(), workspace());
    EXPECT_TRUE(GetParam() == "i3" || workspace() == 1U);
}

INSTANTIATE_TEST_SUITE_P(WindowManagers, SettingsUnder, windowManagers,
                         [](const auto& test) { return test.param; });

}  // namespace

}  // namespace velmo::desktop
