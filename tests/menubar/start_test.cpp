#include "menubar/manager_test.h"

namespace velmo {
namespace {

using Start = ManagerTest;

TEST_F(Start, HidesBothSections) {
    start();
    EXPECT_EQ(level(), RevealLevel::none);
    EXPECT_EQ(length(hiddenDivider), 10000);
    EXPECT_EQ(length(alwaysHiddenDivider), 10000);
    EXPECT_EQ(toggleSymbol(), "chevron.left");
    EXPECT_EQ(nextTimer(), -1);
}

TEST_F(Start, MakesTheItemsInTheirOrder) {
    start();
    std::vector<std::string> names;
    for (const auto* item : desktop_.statusBar().items())
        names.push_back(item->autosaveName());
    EXPECT_EQ(names, (std::vector<std::string>{toggle, hiddenDivider, alwaysHiddenDivider}));
    EXPECT_EQ(desktop_.statusBar().order().rightToLeft(),
              (std::vector<std::string>{"system", toggle, hiddenDivider, alwaysHiddenDivider}));
}

TEST_F(Start, ListensToClicksThenToScrolling) {
    start();
    EXPECT_EQ(desktop_.events().monitoredMasks(), (std::vector<EventMask>{10, 0x400000}));
}

TEST_F(Start, LeavesOutAMonitorThatIsRefused) {
    desktop_.events().setRefusedMonitors(maskOf(EventType::leftMouseDown));
    start();
    EXPECT_EQ(desktop_.events().monitoredMasks(), (std::vector<EventMask>{0x400000}));
    preferences_->showOnScroll.set(true);
    desktop_.movePointer(inMenuBar);
    scroll(0, 10);
    EXPECT_EQ(level(), RevealLevel::hidden);
}

TEST_F(Start, WorksWithoutAnyMonitor) {
    desktop_.events().setRefusedMonitors(~EventMask{0});
    start();
    clickToggle();
    EXPECT_EQ(level(), RevealLevel::hidden);
}

TEST_F(Start, WorksWithoutButtons) {
    desktop_.statusBar().setRefusesButtons(true);
    desktop_.userDefaults().setBool(true, "showOnHover");
    start();
    EXPECT_EQ(length(hiddenDivider), 12);
    EXPECT_TRUE(desktop_.statusBar().trackingAreas().empty());
    manager_->handleToggleClick({EventType::leftMouseUp});
    EXPECT_EQ(level(), RevealLevel::hidden);
    EXPECT_TRUE(manager_->ownItemRanges().empty());
    preferences_->showOnHover.set(false);
    desktop_.advance(0);
    desktop_.advance(5);
    EXPECT_EQ(level(), RevealLevel::none);
}

TEST_F(Start, WorksWithoutTrackingAreas) {
    desktop_.statusBar().setRefusesTrackingAreas(true);
    desktop_.userDefaults().setBool(true, "showOnHover");
    start();
    clickToggle();
    EXPECT_EQ(level(), RevealLevel::hidden);
}

TEST_F(Start, KeepsTheArrangementOfTheUser) {
    desktop_.statusBar().addOther({"mail", 7, "Mail", {}, 24});
    start();
    clickToggle();
    desktop_.statusBar().moveRightOf("mail", toggle);
    desktop_.statusBar().moveLeftOf("mail", hiddenDivider);
    const auto order = desktop_.statusBar().order().rightToLeft();
    manager_.reset();
    EXPECT_TRUE(desktop_.statusBar().items().empty());
    start();
    EXPECT_EQ(desktop_.statusBar().order().rightToLeft(), order);
}

TEST_F(Start, PushesHiddenItemsOffTheScreen) {
    start();
    desktop_.statusBar().addOther({"mail", 7, "Mail", {}, 24});
    EXPECT_FALSE(desktop_.statusBar().isOnScreen(*desktop_.statusBar().slot("mail")));
    clickToggle();
    EXPECT_TRUE(desktop_.statusBar().isOnScreen(*desktop_.statusBar().slot("mail")));
}

TEST_F(Start, LeavesNothingBehindWhenTheManagerIsGone) {
    desktop_.userDefaults().setBool(true, "showOnHover");
    desktop_.userDefaults().setBool(true, "showOnScroll");
    start();
    clickToggle();
    clickElsewhere();
    desktop_.movePointer(inMenuBar);
    desktop_.scrollAtPointer(0, 10);
    preferences_->autoRehide.set(false);
    manager_.reset();
    EXPECT_TRUE(desktop_.events().monitoredMasks().empty());
    EXPECT_TRUE(desktop_.statusBar().trackingAreas().empty());
    desktop_.advance(100);
    preferences_->autoRehide.set(true);
    EXPECT_TRUE(desktop_.runLoop().runUntilIdle());
    EXPECT_TRUE(desktop_.statusBar().items().empty());
}

}  // namespace
}  // namespace velmo
