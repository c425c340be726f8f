#include "hidden_items/hidden_items_panel_controller.h"

#include "platform/simulated/simulated_desktop.h"
#include "views/view_search.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

class PanelController : public testing::Test {
protected:
    static constexpr Rect anchor{700, 874, 30, 26};
    static constexpr EventMask presses = 10;

    PanelController() {
        // Away from the panel.
        desktop_.events().setMouseLocation({10, 10});
    }

    void show(const Rect& below = anchor) { controller_->show({item(1)}, {}, screen_, below); }
    static PanelItem item(std::uint32_t windowID) {
        PanelItem item;
        item.info.windowID = windowID;
        item.info.title = "item " + std::to_string(windowID);
        item.info.bounds = {0, 0, 24, 24};
        return item;
    }
    SimulatedPanel& panel() { return *desktop_.windows().panels().front(); }
    bool hasMonitors() {
        return !desktop_.events().monitoredMasks().empty() ||
               !desktop_.events().locallyMonitoredMasks().empty();
    }

    SimulatedDesktop desktop_;
    Screen screen_ = SimulatedScreens::withMenuBar({0, 0, 1440, 900});
    std::optional<HiddenItemsPanelController> controller_{std::in_place, desktop_.platform()};
};

TEST_F(PanelController, MakesNoPanelBeforeItIsNeeded) {
    EXPECT_TRUE(desktop_.windows().panels().empty());
    EXPECT_FALSE(controller_->isVisible());
    controller_->close();
    EXPECT_TRUE(desktop_.windows().panels().empty());
}

TEST_F(PanelController, MakesAFloatingPanelThatTakesNoFocus) {
    show();
    EXPECT_TRUE(controller_->isVisible());
    const PanelConfiguration expected{32896, 101, 265, true, false, true, 4, 5, 0, 1, 10, "Hidden items"};
    EXPECT_EQ(panel().configuration(), expected);
    EXPECT_TRUE(desktop_.application().calls().empty());
}

TEST_F(PanelController, KeepsThePanelForTheNextTime) {
    show();
    const auto* first = &panel();
    controller_->close();
    EXPECT_FALSE(controller_->isVisible());
    controller_->show({item(2)}, {item(3)}, screen_, anchor);
    ASSERT_EQ(desktop_.windows().panels().size(), 1U);
    EXPECT_EQ(&panel(), first);
    EXPECT_FALSE(shows(panel().content(), "item 1"));
    EXPECT_TRUE(shows(panel().content(), "item 2"));
    EXPECT_TRUE(shows(panel().content(), "item 3"));
}

TEST_F(PanelController, ShowsThePanelOnceItIsFilledAndInItsPlace) {
    show();
    EXPECT_EQ(panel().calls(), (std::vector<std::string>{"setContent", "setFrame", "orderFrontRegardless"}));
}

TEST_F(PanelController, CentresThePanelSixPointsBelowItsAnchor) {
    desktop_.windows().setFittingSize({201, 36});
    show();
    EXPECT_EQ(panel().frame(), (Rect{614.5, 832, 201, 36}));
}

TEST_F(PanelController, StaysEightPointsInsideTheRightEdge) {
    desktop_.windows().setFittingSize({200, 36});
    show({1317, 874, 30, 26});
    EXPECT_EQ(panel().frame().maxX(), 1432);
    show({1316.5, 874, 30, 26});
    EXPECT_EQ(panel().frame().maxX(), 1431.5);
    show({1410, 874, 30, 26});
    EXPECT_EQ(panel().frame(), (Rect{1232, 832, 200, 36}));
}

TEST_F(PanelController, StaysEightPointsInsideTheLeftEdge) {
    desktop_.windows().setFittingSize({200, 36});
    show({0, 874, 30, 26});
    EXPECT_EQ(panel().frame().minX(), 8);
    show({93, 874, 30, 26});
    EXPECT_EQ(panel().frame().minX(), 8);
    show({93.5, 874, 30, 26});
    EXPECT_EQ(panel().frame().minX(), 8.5);
}

TEST_F(PanelController, GivesTheLeftEdgeWayWhereItIsWiderThanTheScreen) {
    desktop_.windows().setFittingSize({2000, 36});
    show();
    EXPECT_EQ(panel().frame().minX(), 8);
}

TEST_F(PanelController, StaysInsideAScreenThatIsNotThePrimaryOne) {
    desktop_.windows().setFittingSize({200, 36});
    screen_ = {{-1000, 100, 1000, 800}, {-950, 100, 900, 774}, 1};
    show({-40, 874, 30, 26});
    EXPECT_EQ(panel().frame().maxX(), -58);
    show({-990, 874, 30, 26});
    EXPECT_EQ(panel().frame().minX(), -942);
}

TEST_F(PanelController, KnowsThatTheSystemHasClosedThePanel) {
    show();
    panel().close();
    EXPECT_FALSE(controller_->isVisible());
    EXPECT_FALSE(hasMonitors());
    show();
    EXPECT_TRUE(controller_->isVisible());
    EXPECT_TRUE(hasMonitors());
}

TEST_F(PanelController, ListensOnlyWhileItIsShown) {
    EXPECT_FALSE(hasMonitors());
    show();
    EXPECT_EQ(desktop_.events().monitoredMasks(), std::vector<EventMask>{presses});
    EXPECT_EQ(desktop_.events().locallyMonitoredMasks(), std::vector<EventMask>{1034});
    show();
    EXPECT_EQ(desktop_.events().monitoredMasks(), std::vector<EventMask>{presses});
    EXPECT_EQ(desktop_.events().locallyMonitoredMasks(), std::vector<EventMask>{1034});
    controller_->close();
    EXPECT_FALSE(hasMonitors());
}

TEST_F(PanelController, ClosesAfterAClickInAnotherApplication) {
    for (const auto button : {MouseButton::left, MouseButton::right}) {
        show();
        desktop_.clickAtPointer(button);
        EXPECT_TRUE(controller_->isVisible());
        desktop_.runLoop().runPosted();
        EXPECT_FALSE(controller_->isVisible());
        EXPECT_FALSE(hasMonitors());
    }
}

TEST_F(PanelController, ClosesOnEscapeWhichReachesNothingElse) {
    show();
    EXPECT_FALSE(desktop_.pressKey(53));
    EXPECT_FALSE(controller_->isVisible());
    EXPECT_FALSE(hasMonitors());
}

TEST_F(PanelController, LetsOtherKeysPass) {
    show();
    EXPECT_TRUE(desktop_.pressKey(36));
    EXPECT_TRUE(controller_->isVisible());
}

TEST_F(PanelController, ClosesOnAPressInAnotherOwnWindowWhichGoesOn) {
    for (const auto type : {EventType::leftMouseDown, EventType::rightMouseDown}) {
        show();
        EXPECT_TRUE(desktop_.events().deliverLocally({type, 0, 0, 0, 55}));
        EXPECT_FALSE(controller_->isVisible());
        EXPECT_FALSE(hasMonitors());
    }
}

TEST_F(PanelController, StaysOpenOnAPressInItself) {
    show();
    EXPECT_TRUE(
        desktop_.events().deliverLocally({EventType::leftMouseDown, 0, 0, 0, panel().windowNumber()}));
    EXPECT_TRUE(controller_->isVisible());
}

TEST_F(PanelController, TellsTheClickWhosePressClosedIt) {
    const auto press = [this](std::int64_t number) {
        desktop_.events().deliverLocally({EventType::leftMouseDown, 0, 0, 0, 55, 0, {}, number});
    };
    const auto isClosedBy = [this](std::int64_t number) {
        return controller_->wasClosedBy({EventType::leftMouseUp, 0, 0, 0, 55, 0, {}, number});
    };
    show();
    press(7);
    EXPECT_TRUE(isClosedBy(7));
    EXPECT_FALSE(isClosedBy(8)) << "in the same window";
    show();
    EXPECT_FALSE(isClosedBy(7)) << "shown since";
    for (const std::int64_t number : {-1, 0, 1})
        EXPECT_FALSE(isClosedBy(number)) << "closed by none";
    press(0);
    EXPECT_FALSE(isClosedBy(0)) << "not on an item";
}

TEST_F(PanelController, HandsOnWhatIsPressedInIt) {
    std::vector<std::uint32_t> activated;
    int settings = 0;
    controller_->onActivate = [&activated](const PanelItem& item) {
        activated.push_back(item.info.windowID);
    };
    controller_->onOpenSettings = [&settings] { ++settings; };
    show();
    press(panel().content(), "item 1");
    press(panel().content(), "Velmo Settings");
    EXPECT_EQ(activated, std::vector<std::uint32_t>{1});
    EXPECT_EQ(settings, 1);
}

TEST_F(PanelController, ToleratesPressesThatNobodyWants) {
    show();
    press(panel().content(), "item 1");
    press(panel().content(), "Velmo Settings");
    EXPECT_TRUE(controller_->isVisible());
}

TEST_F(PanelController, LeavesNothingBehind) {
    show();
    const View content = panel().content();
    desktop_.clickAtPointer();
    controller_.reset();
    EXPECT_TRUE(desktop_.windows().panels().empty());
    EXPECT_FALSE(hasMonitors());
    desktop_.runLoop().runPosted();
    press(content, "item 1");
    press(content, "Velmo Settings");
}

TEST_F(PanelController, ShowsNothingWhereTheSystemGivesNoPanel) {
    desktop_.windows().setRefuses(true);
    show();
    EXPECT_FALSE(controller_->isVisible());
    EXPECT_FALSE(hasMonitors());
    controller_->close();
    desktop_.windows().setRefuses(false);
    show();
    EXPECT_TRUE(controller_->isVisible());
}

TEST_F(PanelController, GoesWithoutMonitorsThatAreRefused) {
    desktop_.events().setRefusedMonitors(presses);
    show();
    EXPECT_TRUE(controller_->isVisible());
    EXPECT_FALSE(hasMonitors());
}

}  // namespace
}  // namespace velmo
