#include "desktop_session.h"

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

    std::optional<Area> panel() const {
        const auto window = x().windowTitled("Velmo.Panel");
        if (!window || !x().isViewable(*window))
            return std::nullopt;
        return x().area(*window);
    }

    void openPanel() {
        click(toggle());
        ASSERT_TRUE(eventually([&] { return panel().has_value(); }));
    }

    /// The middle of an entry of the panel, from the left.
    Area entry(int index) const {
        constexpr int iconWidth = 30;
        constexpr int edge = 8;
        constexpr int padding = 2;
        constexpr int gap = 2;
        const int width = iconWidth + 2 * padding;
        return {panel()->x + edge + index * (width + gap) + padding, panel()->y, iconWidth, panel()->height};
    }

    std::vector<std::uint32_t> pixelsAround(int centreX, int centreY) const {
        constexpr int reach = 4;
        std::vector<std::uint32_t> pixels;
        for (int y = -reach; y <= reach; ++y) {
            for (int dx = -reach; dx <= reach; ++dx)
                pixels.push_back(x().pixel(centreX + dx, centreY + y));
        }
        return pixels;
    }

    xcb_window_t keyboard_ = XCB_WINDOW_NONE;
    xcb_window_t clipboard_ = XCB_WINDOW_NONE;
};

TEST_F(HiddenItemsPanel, OpensUnderTheToggleWithATruePictureOfEachIcon) {
    startWithHiddenIcons();
    openPanel();
    const auto below = *x().area(toggle());
    EXPECT_GE(panel()->y, below.y + below.height);
    EXPECT_EQ(panel()->x + panel()->width, 1280 - 8) << "kept inside of the screen";
    EXPECT_TRUE(eventually([&] { return isHidden(keyboard_); }))
        << "hidden again after its picture was taken";

    // Left to right, as the icons lie in the bar: the one that was dragged there last comes first.
    const bool clipboardIsLeft = x().area(clipboard_)->x < x().area(keyboard_)->x;
    const auto pictured = entry(clipboardIsLeft ? 1 : 0);
    const auto picture = pixelsAround(pictured.midX(), pictured.midY());
    // Commands reveal in the bar, whatever a click does.
    xdotool({"key", "Escape"});
    ASSERT_TRUE(eventually([&] { return !panel(); }));
    clickHolding("Alt_L", toggle());
    ASSERT_TRUE(eventually([&] { return isOnScreen(keyboard_); }));
    const auto icon = *x().area(keyboard_);
    EXPECT_TRUE(eventually([&] { return pixelsAround(icon.midX(), icon.midY()) == picture; }));
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

TEST_F(HiddenItemsPanel, ClickOnAPictureOpensThatProgramsOwnMenu) {
    startWithHiddenIcons();
    openPanel();
    const bool clipboardIsLeft = x().area(clipboard_)->x < x().area(keyboard_)->x;
    const auto pictured = entry(clipboardIsLeft ? 0 : 1);
    const auto menuOfTheClipboard = [&] {
        for (const auto window : x().children(x().root())) {
            if (x().isViewable(window) &&
                x().property(window, "WM_CLASS").find("Parcellite") != std::string::npos)
                return true;
        }
        return false;
    };
    EXPECT_FALSE(menuOfTheClipboard());
    xdotool({"mousemove", std::to_string(pictured.midX()), std::to_string(pictured.midY()), "click", "1"});
    EXPECT_TRUE(eventually([&] { return !panel() && isOnScreen(clipboard_); }));
    EXPECT_TRUE(eventually(menuOfTheClipboard));
    // The pointer is left over the icon.
    const auto icon = *x().area(clipboard_);
    EXPECT_LT(std::abs(icon.midX() - x().pointer().first), 3);
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
