#include "desktop_session.h"

namespace velmo::desktop {

namespace {

class MainJob : public DesktopSession {
protected:
    void SetUp() override {
        DesktopSession::SetUp();
        startServer();
        startWindowManager();
    }

    /// Velmo with one program's icon left of the divider, hidden.
    void startWithHiddenIcon(const nlohmann::json& defaults = nlohmann::json::object()) {
        if (!defaults.empty())
            writeDefaults(defaults);
        startVelmo();
        icon_ = startTrayProgram("gxkb", "Gxkb");
        superDrag(icon_, farLeft);
        movePointer(farLeft, farLeft);
        ASSERT_TRUE(eventually([&] { return iconIsHidden(); }));
    }

    void reveal() {
        click(toggle());
        ASSERT_TRUE(eventually([&] { return iconIsShown(); }));
    }

    bool iconIsShown() const { return isOnScreen(icon_) && !dividerIsExpanded(); }
    bool iconIsHidden() const { return isHidden(icon_) && dividerIsExpanded(); }

    xcb_window_t icon_ = XCB_WINDOW_NONE;
};

TEST_F(MainJob, NewIconIsVisibleBetweenDividerAndToggle) {
    startVelmo();
    icon_ = startTrayProgram("gxkb", "Gxkb");
    ASSERT_TRUE(eventually([&] { return isOnScreen(icon_); }));
    const auto icon = *x().area(icon_);
    EXPECT_LT(icon.x, x().area(toggle())->x);
    const auto dividerArea = *x().area(divider());
    EXPECT_LE(dividerArea.x + dividerArea.width, icon.x);
    EXPECT_TRUE(dividerIsExpanded()) << "what lies left of the divider is hidden from the first moment";
}

TEST_F(MainJob, IconDraggedLeftOfTheDividerLeavesTheScreen) {
    startWithHiddenIcon();
    EXPECT_LT(x().area(icon_)->x, 1280 - 10000) << "by as many points as the divider is long";
}

TEST_F(MainJob, ClickOnTheToggleBringsTheIconBack) {
    startWithHiddenIcon();
    reveal();
    EXPECT_EQ(x().area(divider())->width, 12);
    const auto icon = *x().area(icon_);
    EXPECT_LE(icon.x + icon.width, x().area(divider())->x);
}

TEST_F(MainJob, SecondClickHidesAgain) {
    startWithHiddenIcon({{"autoRehide", false}});
    reveal();
    click(toggle());
    EXPECT_TRUE(eventually([&] { return iconIsHidden(); }));
}

TEST_F(MainJob, RehideTimerHidesOnceThePointerHasLeftTheBar) {
    startWithHiddenIcon({{"rehideDelay", 1.5}, {"hideOnClickOutside", false}});
    reveal();
    EXPECT_TRUE(stays([&] { return iconIsShown(); }, milliseconds(2500))) << "the pointer rests in the bar";
    movePointer(farLeft, farLeft);
    EXPECT_TRUE(eventually([&] { return iconIsHidden(); }, milliseconds(2000)));
}

TEST_F(MainJob, RehideTimerWaitsItsFullDelay) {
    startWithHiddenIcon({{"rehideDelay", 2.0}});
    reveal();
    movePointer(farLeft, farLeft);
    EXPECT_TRUE(stays([&] { return iconIsShown(); }, milliseconds(1500)));
    EXPECT_TRUE(eventually([&] { return iconIsHidden(); }, milliseconds(1500)));
}

TEST_F(MainJob, ClickInAnotherWindowHides) {
    startWithHiddenIcon({{"autoRehide", false}});
    const auto other = startOrdinaryWindow();
    reveal();
    movePointer(farLeft, farLeft);
    EXPECT_TRUE(stays([&] { return iconIsShown(); }, milliseconds(700)));
    click(other);
    EXPECT_TRUE(eventually([&] { return iconIsHidden(); }));
}

TEST_F(MainJob, ClickInAnotherWindowHidesNothingWhenThatIsSwitchedOff) {
    startWithHiddenIcon({{"autoRehide", false}, {"hideOnClickOutside", false}});
    const auto other = startOrdinaryWindow();
    reveal();
    click(other);
    EXPECT_TRUE(stays([&] { return iconIsShown(); }, milliseconds(1000)));
}

TEST_F(MainJob, ClickOnARevealedIconHidesNothing) {
    startWithHiddenIcon({{"autoRehide", false}});
    reveal();
    click(icon_);
    EXPECT_TRUE(stays([&] { return iconIsShown(); }, milliseconds(800)));
}

TEST_F(MainJob, LeftClickOnTheCollapsedDividerHides) {
    startWithHiddenIcon({{"autoRehide", false}, {"hideOnClickOutside", false}});
    reveal();
    click(divider());
    EXPECT_TRUE(eventually([&] { return iconIsHidden(); }));
}

TEST_F(MainJob, MiddleClickAndPressReleasedElsewhereDoNothing) {
    startWithHiddenIcon({{"hideOnClickOutside", false}});
    click(toggle(), 2);
    EXPECT_TRUE(stays([&] { return iconIsHidden(); }, milliseconds(300)));
    const auto place = *x().area(toggle());
    xdotool({"mousemove", std::to_string(place.midX()), "13", "mousedown", "1", "mousemove", "600", "400",
             "mouseup", "1"});
    EXPECT_TRUE(stays([&] { return iconIsHidden(); }, milliseconds(300)));
}

TEST_F(MainJob, OptionClickRevealsTheAlwaysHiddenSection) {
    startWithHiddenIcon({{"autoRehide", false}, {"alwaysHiddenEnabled", true}});
    const auto second = startTrayProgram("parcellite", "Parcellite");
    clickHolding("Alt_L", toggle());
    ASSERT_TRUE(eventually([&] { return iconIsShown() && x().area(alwaysHiddenDivider())->width == 12; }));
    superDrag(second, farLeft);
    ASSERT_TRUE(eventually([&] { return x().area(second)->x < x().area(alwaysHiddenDivider())->x; }));

    click(toggle());
    ASSERT_TRUE(eventually([&] { return iconIsHidden() && !isOnScreen(second); }));
    reveal();
    EXPECT_FALSE(isOnScreen(second)) << "a plain click leaves the always-hidden section where it is";
    clickHolding("Alt_L", toggle());
    EXPECT_TRUE(eventually([&] { return iconIsShown() && isOnScreen(second); }));
    clickHolding("Alt_L", toggle());
    EXPECT_TRUE(eventually([&] { return iconIsHidden() && !isOnScreen(second); }));
}

TEST_F(MainJob, HoverOverTheToggleRevealsWhenSwitchedOn) {
    startWithHiddenIcon({{"autoRehide", false}, {"showOnHover", true}});
    const auto place = *x().area(toggle());
    xdotool(
        {"mousemove", std::to_string(place.midX()), std::to_string(place.midY()), "mousemove", "300", "300"});
    EXPECT_TRUE(stays([&] { return iconIsHidden(); }, milliseconds(500))) << "the pointer has left at once";
    movePointer(place.midX(), place.midY());
    EXPECT_TRUE(eventually([&] { return iconIsShown(); }, milliseconds(1500)));
}

TEST_F(MainJob, HoverDoesNothingWhenSwitchedOff) {
    startWithHiddenIcon();
    const auto place = *x().area(toggle());
    movePointer(place.midX(), place.midY());
    EXPECT_TRUE(stays([&] { return iconIsHidden(); }, milliseconds(800)));
}

TEST_F(MainJob, ScrollOnTheBarTogglesWhenSwitchedOn) {
    startWithHiddenIcon({{"autoRehide", false}, {"showOnScroll", true}});
    xdotool({"mousemove", "300", "300", "click", "4"});
    EXPECT_TRUE(stays([&] { return iconIsHidden(); }, milliseconds(300))) << "not on the bar";
    xdotool({"mousemove", "300", "13", "click", "4", "click", "4"});
    EXPECT_TRUE(eventually([&] { return iconIsShown(); }));
    EXPECT_TRUE(stays([&] { return iconIsShown(); }, milliseconds(700))) << "one gesture toggles once";
    xdotool({"click", "5"});
    EXPECT_TRUE(eventually([&] { return iconIsHidden(); }));
}

TEST_F(MainJob, ScrollDoesNothingWhenSwitchedOff) {
    startWithHiddenIcon();
    xdotool({"mousemove", "300", "13", "click", "4"});
    EXPECT_TRUE(stays([&] { return iconIsHidden(); }, milliseconds(500)));
}

TEST_F(MainJob, OpenMenuOfAnotherProgramKeepsTheIconsShown) {
    startWithHiddenIcon({{"rehideDelay", 1.0}, {"hideOnClickOutside", false}});
    reveal();
    click(icon_, 3);
    movePointer(farLeft, farLeft);
    EXPECT_TRUE(stays([&] { return iconIsShown(); }, milliseconds(2500)));
    xdotool({"key", "Escape"});
    EXPECT_TRUE(eventually([&] { return iconIsHidden(); }, milliseconds(3000)));
}

TEST_F(MainJob, OrderAndSettingsSurviveARestart) {
    startWithHiddenIcon({{"autoRehide", false},
                         {"alwaysHiddenEnabled", true},
                         {"showOnScroll", true},
                         {"showOnHover", true}});
    startTrayProgram("parcellite", "Parcellite");
    clickHolding("Alt_L", toggle());
    ASSERT_TRUE(eventually([&] { return x().area(alwaysHiddenDivider())->width == 12; }));
    superDrag(iconOf("Parcellite"), farLeft);
    click(toggle());
    ASSERT_TRUE(eventually([&] { return iconIsHidden(); }));
    const auto order = readDefaults()["statusItemOrder"];
    // Left on the toggle, the pointer would count as hovering over it after the restart.
    movePointer(farLeft, farLeft);
    stopVelmo();

    startVelmo();
    // Both programs dock anew, with windows of their choice.
    icon_ = iconOf("Gxkb");
    const auto alwaysHidden = iconOf("Parcellite");
    EXPECT_TRUE(eventually([&] { return iconIsHidden() && isHidden(alwaysHidden); }));
    EXPECT_EQ(readDefaults()["statusItemOrder"], order);
    EXPECT_EQ(readDefaults()["autoRehide"], false);

    const auto other = startOrdinaryWindow();
    reveal();
    EXPECT_TRUE(isHidden(alwaysHidden));
    // A second click before the hover's delay has passed would be undone by the hover.
    EXPECT_TRUE(stays([&] { return iconIsShown(); }, milliseconds(500)));
    click(toggle());
    ASSERT_TRUE(eventually([&] { return iconIsHidden(); }));
    movePointer(farLeft, farLeft);
    const auto place = *x().area(toggle());
    movePointer(place.midX(), place.midY());
    ASSERT_TRUE(eventually([&] { return iconIsShown(); })) << "hover";
    click(divider());
    ASSERT_TRUE(eventually([&] { return iconIsHidden(); })) << "divider";
    clickHolding("Alt_L", toggle());
    ASSERT_TRUE(eventually([&] { return iconIsShown() && isOnScreen(alwaysHidden); })) << "Option";
    click(other);
    ASSERT_TRUE(eventually([&] { return iconIsHidden() && isHidden(alwaysHidden); })) << "click outside";
    xdotool({"mousemove", "300", "13", "click", "4"});
    ASSERT_TRUE(eventually([&] { return iconIsShown(); })) << "scroll";
    superDrag(icon_, x().area(toggle())->x - 20);
    click(toggle());
    EXPECT_TRUE(eventually([&] { return dividerIsExpanded() && isOnScreen(icon_); })) << "dragged out again";
}

TEST_F(MainJob, TimerHidesAfterARestartToo) {
    startWithHiddenIcon({{"rehideDelay", 1.0}});
    stopVelmo();
    startVelmo();
    icon_ = iconOf("Gxkb");
    reveal();
    movePointer(farLeft, farLeft);
    EXPECT_TRUE(eventually([&] { return iconIsHidden(); }, milliseconds(2500)));
}

TEST_F(MainJob, ClickOnTheToggleCountsAsSuchThoughThePointerHasMovedOn) {
    startWithHiddenIcon({{"autoRehide", false}});
    const auto place = *x().area(toggle());
    velmo().signal(SIGSTOP);
    xdotool({"mousemove", std::to_string(place.midX()), "13", "click", "1", "mousemove", "300", "300"});
    velmo().signal(SIGCONT);
    ASSERT_TRUE(eventually([&] { return iconIsShown(); }));
    EXPECT_TRUE(stays([&] { return iconIsShown(); }, milliseconds(700)));
}

TEST_F(MainJob, DragWorksWhateverTheLocks) {
    for (const std::string lock : {"Caps_Lock", "Num_Lock"}) {
        xdotool({"key", lock});
    }
    startWithHiddenIcon();
}

}  // namespace

}  // namespace velmo::desktop
