#include "panel_window_session.h"

namespace velmo::desktop {

namespace {

constexpr std::uint32_t backdropColor = 0x0000ff;

/// Behind everything lies a blue window, so that what is translucent is seen.
class CompositedPanel : public PanelWindowSession {
protected:
    void SetUp() override {
        DesktopSession::SetUp();
        startServer();
        backdrop_ = makeBackdrop();
    }

    /// One that filled the screen would not be composited by all.
    xcb_window_t makeBackdrop() const { return makeWindow({0, 0, 1280, 700}, backdropColor); }

    int red(int pixelX, int pixelY) const { return static_cast<int>(x().pixel(pixelX, pixelY) >> 16); }
    int blue(int pixelX, int pixelY) const { return static_cast<int>(x().pixel(pixelX, pixelY) & 0xff); }
    /// The panel on a composited screen, once it was painted.
    Area openCompositedPanel() {
        openPanelWindow();
        const auto place = strip(shadowMargin);
        EXPECT_TRUE(eventually([&] { return red(place.midX(), place.y + 3) > 200; }));
        return place;
    }

    xcb_window_t backdrop_ = XCB_WINDOW_NONE;
};

class CompositedPanelAnywhere : public CompositedPanel, public testing::WithParamInterface<Composition> {
protected:
    void SetUp() override {
        CompositedPanel::SetUp();
        startComposition(GetParam());
        // What was there before is composited by some only once it changes.
        backdrop_ = makeBackdrop();
    }
};

INSTANTIATE_TEST_SUITE_P(Desktop, CompositedPanelAnywhere,
                         testing::Values(Composition::picom, Composition::xfwm4, Composition::metacity),
                         [](const auto& suite) { return nameOf(suite.param); });

TEST_P(CompositedPanelAnywhere, IsTranslucentAndRound) {
    startVelmoForPanels();
    const auto place = openCompositedPanel();
    EXPECT_EQ(place.x + place.width, 1280 - 8) << "the strip is where it is without a shadow";
    const auto below = *x().area(toggle());
    EXPECT_EQ(place.y, below.y + below.height + 6);
    // 94 percent of 0xfa, and of the backdrop nothing that is red.
    EXPECT_NEAR(red(place.midX(), place.y + 3), 235, 2);
    for (const int cornerX : {place.x, place.x + place.width - 1}) {
        for (const int cornerY : {place.y, place.y + place.height - 1}) {
            EXPECT_LT(red(cornerX, cornerY), 20) << cornerX << " " << cornerY;
            EXPECT_GT(blue(cornerX, cornerY), 150);
        }
    }
}

TEST_P(CompositedPanelAnywhere, HasOneSoftShadowAndTheBarHasNone) {
    startVelmoForPanels();
    const auto place = openCompositedPanel();
    const int bottom = place.y + place.height;
    const auto shade = [&](int distance) { return 255 - blue(place.midX(), bottom + distance); };
    EXPECT_GT(shade(1), 25);
    EXPECT_LT(shade(1), 90);
    for (int distance = 1; distance < shadowMargin; ++distance)
        EXPECT_GE(shade(distance), shade(distance + 1)) << distance;
    EXPECT_GT(255 - blue(place.x - 2, place.midY()), 10) << "at its side";
    // One of the compositing manager's own would reach much farther.
    EXPECT_EQ(shade(shadowMargin + 1), 0);
    EXPECT_EQ(blue(place.x - shadowMargin - 1, place.midY()), 255);
    const int barHeight = x().area(bar())->height;
    EXPECT_EQ(x().pixel(farLeft, barHeight / 2), lightBar);
    for (int distance = 0; distance < shadowMargin; ++distance)
        EXPECT_EQ(x().pixel(farLeft, barHeight + distance), backdropColor) << distance;
}

TEST_F(CompositedPanel, LeavesPressesInItsShadowToWhatLiesBeneath) {
    startCompositingManager();
    startVelmoForPanels();
    const auto place = openCompositedPanel();
    movePointer(place.x, place.midY());
    EXPECT_EQ(x().windowUnderPointer(), panelWindow());
    movePointer(place.x - 1, place.midY());
    EXPECT_EQ(x().windowUnderPointer(), backdrop_);
    movePointer(place.midX(), place.y - 1);
    EXPECT_NE(x().windowUnderPointer(), panelWindow());
    eventsGot(XCB_BUTTON_PRESS);
    xdotool({"mousemove", std::to_string(place.x - 4), std::to_string(place.midY()), "click", "1"});
    EXPECT_TRUE(eventually([&] { return !panelWindow(); }));
    EXPECT_EQ(eventsGot(XCB_BUTTON_PRESS), 1);
}

TEST_F(CompositedPanel, HasTheSameShadowAfterAnotherProgramHasDestroyedIt) {
    startCompositingManager();
    startVelmoForPanels();
    const auto place = openCompositedPanel();
    const Area around = {place.x - 2 * shadowMargin, place.y, place.width + 2 * shadowMargin,
                         place.height + 2 * shadowMargin};
    const auto picture = x().pixels(around);
    xcb_destroy_window(x().raw(), *panelWindow());
    EXPECT_TRUE(eventually([&] { return !panelWindow() && blue(place.midX(), place.midY()) == 255; }));
    EXPECT_EQ(openCompositedPanel(), place);
    EXPECT_TRUE(eventually([&] { return x().pixels(around) == picture; }));
    movePointer(place.x, place.midY());
    EXPECT_EQ(x().windowUnderPointer(), panelWindow());
    movePointer(place.x - 1, place.midY());
    EXPECT_EQ(x().windowUnderPointer(), backdrop_);
}

TEST_F(CompositedPanel, IsSquareAndOpaqueWithoutACompositingManager) {
    startVelmoForPanels();
    openPanelWindow();
    const auto place = strip();
    EXPECT_TRUE(eventually([&] { return x().pixel(place.midX(), place.y + 3) == 0xfafafc; }));
    // The border, and nothing of the backdrop.
    for (const int cornerX : {place.x, place.x + place.width - 1}) {
        for (const int cornerY : {place.y, place.y + place.height - 1})
            EXPECT_GT(red(cornerX, cornerY), 150) << cornerX << " " << cornerY;
    }
    EXPECT_EQ(x().pixel(place.x - 1, place.midY()), backdropColor);
    EXPECT_EQ(x().pixel(place.midX(), place.y + place.height), backdropColor);
}

TEST_F(CompositedPanel, FollowsACompositingManagerThatComesAndGoes) {
    startVelmoForPanels();
    openPanelWindow();
    const auto square = strip();
    for (int time = 0; time < 2; ++time) {
        startCompositingManager();
        EXPECT_TRUE(eventually([&] { return panelWindow() && strip(shadowMargin) == square; }));
        EXPECT_TRUE(eventually([&] { return red(square.midX(), square.y + 3) == 235; }));
        EXPECT_LT(red(square.x, square.y), 20);
        stopCompositingManager();
        EXPECT_TRUE(eventually([&] { return panelWindow() && strip() == square; }));
        EXPECT_TRUE(eventually([&] { return x().pixel(square.midX(), square.y + 3) == 0xfafafc; }));
        EXPECT_GT(red(square.x, square.y), 150);
    }
    xdotool({"mousemove", std::to_string(square.midX()), std::to_string(square.midY()), "click", "1"});
    EXPECT_TRUE(stays([&] { return panelWindow().has_value(); }, milliseconds(300))) << "its own press";
    xdotool({"key", "Escape"});
    EXPECT_TRUE(eventually([&] { return !panelWindow(); }));
    startCompositingManager();
    EXPECT_TRUE(stays([&] { return !panelWindow(); }, milliseconds(300)))
        << "a panel that is closed stays so";
    EXPECT_EQ(openCompositedPanel(), square);
}

TEST_F(CompositedPanel, PopoverKeepsTheKeyboardWhereACompositingManagerComesAndGoes) {
    startVelmoForPanels(
        {{"clockEnabled", true}, {"statusItemOrder", {"Velmo.Clock", "Velmo.Toggle", "Velmo.Divider"}}});
    ASSERT_TRUE(eventually([&] {
        const auto clock = x().windowTitled("Velmo.Clock");
        return clock && x().area(*clock)->width > 40;
    }));
    giveKeyboardTo(backdrop_);
    click(*x().windowTitled("Velmo.Clock"));
    const auto hasKeyboard = [&] {
        const auto popover = shown("Velmo.Popover");
        return popover && x().keyboardOwner() == *popover;
    };
    ASSERT_TRUE(eventually(hasKeyboard));
    const auto first = shown("Velmo.Popover");
    startCompositingManager();
    EXPECT_TRUE(eventually([&] { return shown("Velmo.Popover") != first && hasKeyboard(); }));
    const auto second = shown("Velmo.Popover");
    stopCompositingManager();
    EXPECT_TRUE(eventually([&] { return shown("Velmo.Popover") != second && hasKeyboard(); }));
    xdotool({"key", "Escape"});
    EXPECT_TRUE(eventually([&] { return !shown("Velmo.Popover"); }));
    EXPECT_TRUE(eventually([&] { return x().keyboardOwner() == backdrop_; })) << "and then gives it back";
}

}  // namespace

}  // namespace velmo::desktop
