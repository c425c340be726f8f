#include "platform/simulated/simulated_desktop.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

Image picture(double width) {
    return {Drawing{{width, 18}, false, {}}, true, ""};
}

class SimulatedDesktopTest : public testing::Test {
protected:
    std::unique_ptr<StatusItem> make(const std::string& name, double length) {
        auto item = desktop_.statusBar().makeStatusItem(length);
        item->setAutosaveName(name);
        return item;
    }

    Rect frame(const std::string& identity) { return *desktop_.statusBar().slot(identity)->frame; }

    void listen(StatusItem& item, EventMask mask) {
        item.button()->sendActionOn(mask);
        item.button()->setAction([this] { actions_.push_back(desktop_.application().currentEvent()->type); });
    }

    SimulatedDesktop desktop_;
    std::vector<EventType> actions_;
};

TEST_F(SimulatedDesktopTest, LaysItemsOutFromTheRightEdge) {
    const auto first = make("first", 20);
    const auto second = make("second", 12);
    desktop_.statusBar().addOther({"mail", 7, "Mail", "Inbox", 30});
    EXPECT_EQ(frame("first"), (Rect{1420, 874, 20, 26}));
    EXPECT_EQ(frame("second"), (Rect{1408, 874, 12, 26}));
    EXPECT_EQ(frame("mail"), (Rect{1378, 874, 30, 26}));
    first->setLength(100);
    EXPECT_EQ(frame("mail").x, 1298);
    desktop_.statusBar().setSpacing(2);
    EXPECT_EQ(frame("first").maxX(), 1440);
    EXPECT_EQ(frame("mail"), (Rect{1294, 874, 30, 26}));
}

TEST_F(SimulatedDesktopTest, GivesInvisibleItemsNoRoom) {
    const auto first = make("first", 20);
    const auto second = make("second", 12);
    first->setVisible(false);
    EXPECT_EQ(frame("second").maxX(), 1440);
    EXPECT_EQ(first->button()->frameOnScreen(), (Rect{1420, 874, 20, 26}));
    EXPECT_FALSE(desktop_.click("first"));
    first->setVisible(true);
    EXPECT_EQ(frame("second").maxX(), 1420);
}

TEST_F(SimulatedDesktopTest, MakesVariableLengthsFollowTheImage) {
    const auto item = make("item", StatusItem::variableLength);
    const double bare = frame("item").width;
    item->button()->setImage(picture(18));
    EXPECT_EQ(frame("item").width, bare + 18);
    EXPECT_EQ(item->length(), StatusItem::variableLength);
}

TEST_F(SimulatedDesktopTest, RemembersPlacesByAutosaveName) {
    auto first = make("first", 20);
    const auto second = make("second", 12);
    EXPECT_TRUE(desktop_.statusBar().moveLeftOf("second", "first"));
    first.reset();
    EXPECT_EQ(frame("second").maxX(), 1440);
    first = make("first", 20);
    EXPECT_EQ(frame("first").maxX(), 1428);
    EXPECT_FALSE(desktop_.statusBar().moveLeftOf("unknown", "first"));
}

TEST_F(SimulatedDesktopTest, RemembersPlacesOfOtherApplications) {
    desktop_.statusBar().addOther({"mail", 7, "Mail", {}, 30});
    desktop_.statusBar().addOther({"chat", 8, "Chat", {}, 30});
    desktop_.statusBar().removeOther("mail");
    EXPECT_EQ(frame("chat").maxX(), 1440);
    desktop_.statusBar().addOther({"mail", 9, "Mail", {}, 40});
    EXPECT_EQ(frame("mail").maxX(), 1440);
    EXPECT_EQ(frame("chat").maxX(), 1400);
}

TEST_F(SimulatedDesktopTest, SendsActionsOnlyForReleasesOverThePressedButton) {
    const auto first = make("first", 20);
    const auto second = make("second", 20);
    listen(*first, maskOf(EventType::leftMouseUp) | maskOf(EventType::rightMouseUp));
    listen(*second, maskOf(EventType::leftMouseUp));
    desktop_.press("first");
    EXPECT_TRUE(actions_.empty());
    desktop_.release("second");
    EXPECT_TRUE(actions_.empty());
    desktop_.release("first");
    EXPECT_TRUE(actions_.empty());
    desktop_.click("first");
    desktop_.click("first", MouseButton::right);
    desktop_.click("second", MouseButton::right);
    EXPECT_EQ(actions_, (std::vector{EventType::leftMouseUp, EventType::rightMouseUp}));
    EXPECT_FALSE(desktop_.application().currentEvent());
}

TEST_F(SimulatedDesktopTest, SendsActionsForPressesThatAreAskedFor) {
    const auto item = make("item", 20);
    listen(*item, maskOf(EventType::leftMouseDown));
    desktop_.click("item");
    EXPECT_EQ(actions_, (std::vector{EventType::leftMouseDown}));
}

TEST_F(SimulatedDesktopTest, SendsNoActionOfADisabledButton) {
    const auto item = make("item", 20);
    listen(*item, maskOf(EventType::leftMouseUp));
    desktop_.press("item");
    item->button()->setEnabled(false);
    desktop_.release("item");
    EXPECT_TRUE(actions_.empty());
}

TEST_F(SimulatedDesktopTest, CannotReachItemsPushedOffTheScreen) {
    const auto divider = make("divider", 10000);
    const auto item = make("item", 20);
    EXPECT_FALSE(desktop_.click("item"));
    EXPECT_TRUE(desktop_.click("divider"));
    EXPECT_FALSE(desktop_.click("unknown"));
    EXPECT_FALSE(item->button()->screen());
    EXPECT_TRUE(divider->button()->screen());
}

TEST_F(SimulatedDesktopTest, LetsAnItemEndInItsOwnAction) {
    auto item = make("item", 20);
    item->button()->setAction([&item] { item.reset(); });
    desktop_.click("item");
    EXPECT_EQ(desktop_.statusBar().item("item"), nullptr);
}

TEST_F(SimulatedDesktopTest, ReportsToMonitorsOnlyWhatHappensElsewhere) {
    const auto item = make("item", 20);
    std::vector<EventType> seen;
    const auto monitor =
        desktop_.events().addGlobalMonitor(maskOf(EventType::leftMouseDown) | maskOf(EventType::scrollWheel),
                                           [&](const Event& event) { seen.push_back(event.type); });
    desktop_.movePointer({1430, 880});
    desktop_.clickAtPointer();
    desktop_.scrollAtPointer(1, 1);
    EXPECT_TRUE(seen.empty());
    desktop_.movePointer({700, 400});
    desktop_.clickAtPointer();
    desktop_.clickAtPointer(MouseButton::right);
    desktop_.scrollAtPointer(1, 1);
    EXPECT_EQ(seen, (std::vector{EventType::leftMouseDown, EventType::scrollWheel}));
}

TEST_F(SimulatedDesktopTest, ForgetsMonitorsThatAreGoneAndRefusesWhatItIsToldTo) {
    int seen = 0;
    auto monitor = desktop_.events().addGlobalMonitor(maskOf(EventType::leftMouseDown),
                                                      [&seen](const Event&) { ++seen; });
    monitor.reset();
    desktop_.clickAtPointer();
    EXPECT_EQ(seen, 0);
    EXPECT_TRUE(desktop_.events().monitoredMasks().empty());
    desktop_.events().setRefusedMonitors(maskOf(EventType::scrollWheel));
    EXPECT_EQ(desktop_.events().addGlobalMonitor(maskOf(EventType::scrollWheel), {}), nullptr);
}

TEST_F(SimulatedDesktopTest, SendsAReleaseWhereThePressWent) {
    const auto item = make("item", 20);
    listen(*item, maskOf(EventType::leftMouseUp));
    int seen = 0;
    const auto monitor =
        desktop_.events().addGlobalMonitor(maskOf(EventType::leftMouseUp), [&seen](const Event&) { ++seen; });
    desktop_.movePointer({1430, 880});
    desktop_.pressAtPointer();
    desktop_.movePointer({700, 400});
    desktop_.releaseAtPointer();
    EXPECT_EQ(seen, 0);
    EXPECT_TRUE(actions_.empty());
    desktop_.pressAtPointer();
    desktop_.movePointer({1430, 880});
    desktop_.releaseAtPointer();
    EXPECT_EQ(seen, 1);
    EXPECT_TRUE(actions_.empty());
    desktop_.clickAtPointer();
    EXPECT_EQ(actions_.size(), 1U);
}

class CountingOwner : public TrackingAreaOwner {
public:
    void mouseEnteredWith(const Event& event) override { entered += event.type == EventType::mouseEntered; }
    void mouseExitedWith(const Event& event) override { exited += event.type == EventType::mouseExited; }

    int entered = 0;
    int exited = 0;
};

TEST_F(SimulatedDesktopTest, TellsTrackingAreasOfThePointer) {
    const auto item = make("item", 20);
    CountingOwner owner;
    constexpr auto options =
        tracking::mouseEnteredAndExited | tracking::activeAlways | tracking::inVisibleRect;
    auto area = item->button()->addTrackingArea({}, options, &owner);
    desktop_.movePointer({1430, 880});
    desktop_.movePointer({1431, 880});
    EXPECT_EQ(owner.entered, 1);
    EXPECT_EQ(owner.exited, 0);
    desktop_.movePointer({1000, 880});
    EXPECT_EQ(owner.exited, 1);
    area.reset();
    desktop_.movePointer({1430, 880});
    EXPECT_EQ(owner.entered, 1);
    desktop_.statusBar().setRefusesTrackingAreas(true);
    EXPECT_EQ(item->button()->addTrackingArea({}, options, &owner), nullptr);
}

TEST_F(SimulatedDesktopTest, TellsNothingToAnAreaThatIsNotAlwaysActive) {
    const auto item = make("item", 20);
    CountingOwner owner;
    const auto area = item->button()->addTrackingArea(
        {}, tracking::mouseEnteredAndExited | tracking::inVisibleRect, &owner);
    desktop_.movePointer({1430, 880});
    EXPECT_EQ(owner.entered, 0);
}

TEST_F(SimulatedDesktopTest, ListsWindowsFrontToBack) {
    const auto item = make("item", 20);
    desktop_.statusBar().addOther({"mail", 7, "Mail", "Inbox", 30});
    WindowListEntry document;
    document.layer = 0;
    document.ownerName = "Editor";
    desktop_.windowServer().addWindow(document);
    const auto menu = desktop_.windowServer().addMenu(7, {100, 26, 200, 300});
    const auto list = desktop_.windowServer().windowList(WindowListOption::onScreenOnly);
    ASSERT_TRUE(list);
    ASSERT_EQ(list->size(), 4U);
    EXPECT_EQ(list->at(0).layer, window_layer::popUpMenu);
    EXPECT_EQ(list->at(1).ownerName, "Mail");
    EXPECT_EQ(list->at(1).ownerPID, 7);
    EXPECT_EQ(list->at(1).name, "Inbox");
    EXPECT_EQ(list->at(1).bounds, (Rect{1390, 0, 30, 26}));
    EXPECT_EQ(list->at(2).name, "item");
    EXPECT_EQ(list->at(2).ownerPID, desktop_.processInfo().processIdentifier());
    EXPECT_EQ(list->at(3).ownerName, "Editor");
    desktop_.windowServer().removeWindow(menu);
    EXPECT_EQ(desktop_.windowServer().windowList(WindowListOption::onScreenOnly)->size(), 3U);
    desktop_.windowServer().setAvailable(false);
    EXPECT_FALSE(desktop_.windowServer().windowList(WindowListOption::onScreenOnly));
}

TEST_F(SimulatedDesktopTest, HasNoFramesWithoutAScreen) {
    const auto item = make("item", 20);
    desktop_.screens().set({});
    EXPECT_FALSE(item->button()->frameOnScreen());
    EXPECT_FALSE(item->button()->screen());
    EXPECT_FALSE(desktop_.screens().main());
    EXPECT_TRUE(desktop_.windowServer().windowList(WindowListOption::onScreenOnly)->empty());
    desktop_.screens().set({SimulatedScreens::withMenuBar({0, 0, 800, 600})});
    EXPECT_EQ(item->button()->frameOnScreen(), (Rect{780, 574, 20, 26}));
}

TEST_F(SimulatedDesktopTest, LetsTheMenuBarSlideAway) {
    desktop_.screens().setMenuBarHidden(true);
    const auto screen = desktop_.screens().main();
    ASSERT_TRUE(screen);
    EXPECT_EQ(screen->visibleFrame.maxY(), screen->frame.maxY());
    desktop_.screens().setMenuBarHidden(false);
    EXPECT_EQ(desktop_.screens().main()->visibleFrame.maxY(), 874);
}

TEST_F(SimulatedDesktopTest, KeepsStoredDefaultsApartFromRegisteredOnes) {
    auto& defaults = desktop_.userDefaults();
    defaults.registerDefaults({{"a", true}, {"b", 2.0}});
    EXPECT_TRUE(defaults.boolForKey("a"));
    EXPECT_TRUE(defaults.stored().empty());
    defaults.setBool(false, "a");
    EXPECT_FALSE(defaults.boolForKey("a"));
    defaults.removeObject("a");
    EXPECT_TRUE(defaults.boolForKey("a"));
    defaults.forgetRegistered();
    EXPECT_FALSE(defaults.boolForKey("a"));
    EXPECT_EQ(defaults.doubleForKey("b"), 0);
    EXPECT_EQ(defaults.stringForKey("b"), std::nullopt);
}

}  // namespace
}  // namespace velmo
