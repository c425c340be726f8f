#include "macos/desktop/macos_events.h"
#include "macos/desktop/macos_screens.h"
#include "platform/macos/doubles/menu_bar.h"
#include "platform/macos/macos_test.h"

#include <memory>
#include <vector>

namespace velmo::macos {
namespace {

class MacosEventsTest : public MacosTest {
protected:
    std::unique_ptr<EventMonitor> globalMonitor(EventMask mask) {
        return events.addGlobalMonitor(mask, [this](const Event& event) { seen.push_back(event); });
    }

    MacosEvents events;
    std::vector<Event> seen;
};

TEST_F(MacosEventsTest, TellsEverythingOfEachKindOfEvent) {
    const auto monitor = globalMonitor(~EventMask{0});
    const std::vector<Event> sent = {
        {.type = EventType::leftMouseDown,
         .modifierFlags = modifier::option,
         .windowNumber = 5,
         .eventNumber = 9},
        {.type = EventType::rightMouseUp, .eventNumber = 10},
        {.type = EventType::scrollWheel, .scrollingDeltaX = -1.5, .scrollingDeltaY = 4.25},
        {.type = EventType::keyDown,
         .modifierFlags = modifier::command,
         .keyCode = 40,
         .charactersIgnoringModifiers = "k"},
        {.type = EventType::keyDown, .keyCode = 53},
        {.type = EventType::mouseMoved}};
    for (const Event& event : sent)
        doubles::tellGlobalMonitors(doubles::makeEvent(event));
    EXPECT_EQ(seen, sent);
}

TEST_F(MacosEventsTest, MonitorsWhatIsInTheMaskUntilTheMonitorGoes) {
    auto monitor = globalMonitor(maskOf(EventType::leftMouseDown) | maskOf(EventType::rightMouseDown));
    ASSERT_EQ(system.monitors.size(), 1U);
    EXPECT_EQ(system.monitors[0].mask, 10U);
    doubles::tellGlobalMonitors(doubles::makeEvent({.type = EventType::leftMouseUp}));
    EXPECT_TRUE(seen.empty());
    monitor.reset();
    EXPECT_TRUE(system.monitors.empty());
}

TEST_F(MacosEventsTest, LetsALocalMonitorPassOrSwallowAnEvent) {
    EventDisposition disposition = EventDisposition::pass;
    const auto first = events.addLocalMonitor(maskOf(EventType::keyDown), [&](const Event& event) {
        seen.push_back(event);
        return disposition;
    });
    int later = 0;
    const auto second = events.addLocalMonitor(maskOf(EventType::keyDown), [&](const Event&) {
        ++later;
        return EventDisposition::pass;
    });
    const NSEvent event = doubles::makeEvent({.type = EventType::keyDown, .keyCode = 53});
    EXPECT_TRUE(doubles::tellLocalMonitors(event) == event);
    EXPECT_EQ(later, 1);
    disposition = EventDisposition::swallow;
    EXPECT_FALSE(doubles::tellLocalMonitors(event));
    EXPECT_EQ(later, 1);
    EXPECT_EQ(seen.size(), 2U);
}

TEST_F(MacosEventsTest, LetsGoOfAHandlerWithItsMonitor) {
    const auto kept = std::make_shared<int>(0);
    auto monitor = events.addGlobalMonitor(1, [kept](const Event&) { ++*kept; });
    EXPECT_EQ(kept.use_count(), 2);
    monitor.reset();
    EXPECT_EQ(kept.use_count(), 1);
}

TEST_F(MacosEventsTest, GivesNoMonitorWhereTheSystemRefuses) {
    system.allowsMonitors = false;
    EXPECT_FALSE(globalMonitor(1));
    EXPECT_FALSE(events.addLocalMonitor(1, [](const Event&) { return EventDisposition::pass; }));
}

TEST_F(MacosEventsTest, KnowsWhereThePointerIs) {
    system.mouseLocation = {640.5, 899};
    EXPECT_EQ(events.mouseLocation(), (Point{640.5, 899}));
}

TEST_F(MacosEventsTest, ScreensComeInTheSystemsOrder) {
    const MacosScreens screens;
    EXPECT_TRUE(screens.all().empty());
    EXPECT_EQ(screens.main(), std::nullopt);
    const Screen primary{
        .frame = {0, 0, 1440, 900}, .visibleFrame = {0, 70, 1440, 806}, .backingScaleFactor = 2};
    const Screen other{.frame = {1440, -200, 1920, 1080}, .visibleFrame = {1440, -200, 1920, 1055}};
    system.screens = {doubles::makeScreen(primary), doubles::makeScreen(other)};
    EXPECT_EQ(screens.all(), (std::vector{primary, other}));
    EXPECT_EQ(screens.main(), other);
}

}  // namespace
}  // namespace velmo::macos
