#include "desktop_session.h"

#include <xcb/xtest.h>

#include <algorithm>
#include <chrono>
#include <cmath>

namespace velmo::desktop {

namespace {

class HiddenItemsPanel : public DesktopSession {
protected:
    void SetUp() override {
        DesktopSession::SetUp();
        startServer();
        startWindowManager();
    }

    /// Two programs' icons, hidden; a click on the toggle opens the panel.
    void startWithHiddenIcons(nlohmann::json defaults = nlohmann::json::object()) {
        defaults.emplace("clickAction", "showPanel");
        defaults.emplace("rehideDelay", 30.0);
        writeDefaults(defaults);
        startVelmo();
        keyboard_ = startTrayProgram("gxkb", "Gxkb");
        clipboard_ = startTrayProgram("parcellite", "Parcellite");
        superDrag(keyboard_, farLeft);
        ASSERT_TRUE(eventually([&] { return isHidden(keyboard_); }));
        superDrag(clipboard_, farLeft);
        ASSERT_TRUE(eventually([&] { return isHidden(clipboard_) && isHidden(keyboard_); }));
        movePointer(farLeft, 300);
    }

    /// Presses the toggle, on which the pointer is, and returns how long the icons are revealed thereupon.
    double revealTime() const {
        using std::chrono::steady_clock;
        const auto window = divider();
        const auto width = [&] { return x().area(window)->width; };
        const int before = width();
        for (const auto type : {XCB_BUTTON_PRESS, XCB_BUTTON_RELEASE})
            xcb_test_fake_input(x().raw(), type, 1, 0, x().root(), 0, 0, 0);
        xcb_flush(x().raw());
        const auto until = [&](bool isBefore) {
            const auto limit = steady_clock::now() + milliseconds(8000);
            while ((width() == before) != isBefore && steady_clock::now() < limit)
                continue;
            return steady_clock::now();
        };
        const auto revealed = until(false);
        return std::chrono::duration<double, std::milli>(until(true) - revealed).count();
    }

    xcb_window_t keyboard_ = XCB_WINDOW_NONE;
    xcb_window_t clipboard_ = XCB_WINDOW_NONE;
};

TEST_F(HiddenItemsPanel, OpensUnderTheToggleAndHidesTheIconsAgain) {
    startWithHiddenIcons();
    openPanel();
    const auto below = *x().area(toggle());
    EXPECT_GE(panel()->y, below.y + below.height);
    EXPECT_EQ(panel()->x + panel()->width, 1280 - 8) << "kept inside of the screen";
    EXPECT_TRUE(eventually([&] { return isHidden(keyboard_) && isHidden(clipboard_); }));
}

TEST_F(HiddenItemsPanel, RevealsTheIconsForNoLongerThanTheirPicturesTake) {
    startWithHiddenIcons();
    const auto place = *x().area(toggle());
    movePointer(place.midX(), place.midY());
    std::vector<double> times;
    for (int round = 0; round < 3; ++round) {
        times.push_back(revealTime());
        ASSERT_TRUE(eventually([&] { return panel().has_value(); }));
        xdotool({"key", "Escape"});
        ASSERT_TRUE(eventually([&] { return !panel(); }));
        // Younger pictures would be shown again.
        xdotool({"sleep", "2.1"});
    }
    // Time for the bar's layout, and for the pictures.
    constexpr double layout = 350;
    constexpr double pictures = 50;
    constexpr double precision = 5;
    for (const double time : times)
        EXPECT_GT(time, layout - precision);
    RecordProperty("firstMilliseconds", static_cast<int>(times.front()));
    RecordProperty("laterMilliseconds", static_cast<int>(times.back()));
    // Making the panel, which takes longest at first, keeps nothing revealed.
    EXPECT_LT(times.front(), layout + 1.5 * pictures);
    EXPECT_LT(*std::min_element(times.begin(), times.end()), layout + pictures);
}

TEST_F(HiddenItemsPanel, EscapeClosesIt) {
    startWithHiddenIcons();
    openPanel();
    xdotool({"key", "Escape"});
    EXPECT_TRUE(eventually([&] { return !panel(); }));
}

TEST_F(HiddenItemsPanel, ClickOnAnotherProgramClosesIt) {
    startWithHiddenIcons();
    const auto other = startOrdinaryWindow();
    openPanel();
    click(other);
    EXPECT_TRUE(eventually([&] { return !panel(); }));
}

TEST_F(HiddenItemsPanel, SecondClickOnTheToggleClosesIt) {
    startWithHiddenIcons();
    openPanel();
    click(toggle());
    ASSERT_TRUE(eventually([&] { return !panel(); }));
    EXPECT_TRUE(stays([&] { return !panel(); }, milliseconds(500)));
}

TEST_F(HiddenItemsPanel, PressOnTheToggleThatIsReleasedElsewhereClosesItAndTheNextClickOpensIt) {
    startWithHiddenIcons();
    openPanel();
    const auto place = *x().area(toggle());
    xdotool({"mousemove", std::to_string(place.midX()), std::to_string(place.midY()), "mousedown", "1",
             "mousemove", "300", "400", "mouseup", "1"});
    ASSERT_TRUE(eventually([&] { return !panel(); }));
    click(toggle());
    EXPECT_TRUE(eventually([&] { return panel().has_value(); }));
}

TEST_F(HiddenItemsPanel, TakesNoKeyboardFocus) {
    startWithHiddenIcons();
    const auto other = startOrdinaryWindow();
    const auto otherIsActive = [&] {
        return x().cardinals(x().root(), "_NET_ACTIVE_WINDOW") == std::vector<std::uint32_t>{other};
    };
    ASSERT_TRUE(eventually(otherIsActive));
    openPanel();
    EXPECT_TRUE(stays(otherIsActive, milliseconds(300)));
}

TEST_F(HiddenItemsPanel, AlwaysHiddenIconsStandBehindADividerAndAreRevealedByAClick) {
    startWithHiddenIcons({{"alwaysHiddenEnabled", true}});
    clickHolding("Alt_L", toggle());
    ASSERT_TRUE(eventually([&] { return isOnScreen(clipboard_) && isOnScreen(alwaysHiddenDivider()); }));
    superDrag(clipboard_, farLeft);
    clickHolding("Alt_L", toggle());
    ASSERT_TRUE(eventually([&] { return isHidden(clipboard_) && isHidden(keyboard_); }));
    openPanel();
    constexpr int edge = 8;
    constexpr int gap = 2;
    constexpr int button = 34;
    constexpr int divider = 9;
    constexpr int settingsButton = 28;
    EXPECT_EQ(panel()->width,
              edge + button + gap + divider + gap + button + gap + divider + gap + settingsButton + edge);
    const int middle = panel()->x + edge + button + gap + divider + gap + button / 2;
    xdotool({"mousemove", std::to_string(middle), std::to_string(panel()->y + panel()->height / 2), "click",
             "1"});
    EXPECT_TRUE(eventually([&] { return !panel() && isOnScreen(clipboard_); }));
}

}  // namespace

}  // namespace velmo::desktop
