#include "dates.h"
#include "event.h"
#include "macos/appkit/ns_accessibility.h"
#include "macos/appkit/ns_box.h"
#include "macos/appkit/ns_text_field.h"
#include "macos/services/macos_dates.h"
#include "platform/macos/display/program_display_test.h"
#include "platform/macos/doubles/menu_bar.h"

#include <algorithm>
#include <iterator>
#include <string>

namespace velmo::macos {
namespace {

class CalendarDisplayTest : public ProgramDisplayTest {
protected:
    CalendarDisplayTest() {
        defaults().setBool(true, NSString::from("hasCompletedFirstLaunch"));
        defaults().setBool(true, NSString::from("clockEnabled"));
    }
};

TEST_F(CalendarDisplayTest, TurnsItsMonthsWithClicksIntoItsButtons) {
    run([&](const Platform& platform) {
        click("Velmo.Clock");
        const NSView content = shownCalendar();
        ASSERT_TRUE(content);
        const Date now = platform.runLoop.now();
        const Date before = *platform.dates.currentCalendar().dateByAdding(CalendarUnit::month, -1, now);
        // GNUstep puts it above the clock.
        Message<"NSWindow", false, "setFrameOrigin:", void, CGPoint>::send(content.window().get(),
                                                                           CGPoint{900, 300});
        picture("calendar");
        clickInto(named<NSButton>(content, "Previous month"));
        EXPECT_TRUE(shows(content, platform.dates.formatted(before, DateStyle::monthAndYear)));
        clickInto(named<NSButton>(content, "Today"));
        EXPECT_TRUE(shows(content, platform.dates.formatted(now, DateStyle::monthAndYear)));
    });
}

TEST_F(CalendarDisplayTest, HangsUnderTheClockUntilTheUserClicksElsewhere) {
    run([&](const Platform& /*platform*/) {
        click("Velmo.Clock");
        EXPECT_EQ(system.popoverBehavior, 1);
        EXPECT_EQ(system.popoverEdge, 1U);
        EXPECT_TRUE(system.popoverAnimates);
        ASSERT_FALSE(system.popoverSizes.empty());
        EXPECT_EQ(system.popoverSizes.back().width, 246);
        EXPECT_EQ(system.popoverSizes.back().height, shownCalendar().bounds().size.height);
        const auto content =
            std::find_if(system.accessibilityLabels.begin(), system.accessibilityLabels.end(),
                         [](const auto& label) { return label.second == "Calendar"; });
        ASSERT_NE(content, system.accessibilityLabels.end());
        EXPECT_EQ(system.accessibilityRoles[content->first], groupRole.value().text());
    });
}

TEST_F(CalendarDisplayTest, LetsNoTimePassOnceItHasClosed) {
    run([&](const Platform& platform) {
        click("Velmo.Clock");
        const NSView content = shownCalendar();
        ASSERT_TRUE(content);
        const auto time = [&] { return platform.dates.formatted(platform.runLoop.now(), DateStyle::time); };
        EXPECT_TRUE(runUntil([&] { return shows(content, time()); }));
        click("Velmo.Clock");
        const std::string last = time();
        const Date end = platform.runLoop.now() + 2.2;
        bool goesOn = false;
        runUntil([&] {
            goesOn = goesOn || (time() != last && shows(content, time()));
            return platform.runLoop.now() > end;
        });
        EXPECT_FALSE(goesOn);
    });
}

TEST_F(CalendarDisplayTest, HasTodayOnACircle) {
    run([&](const Platform& platform) {
        click("Velmo.Clock");
        const int day = platform.dates.currentCalendar().component(CalendarUnit::day, platform.runLoop.now());
        const auto views = viewsBelow(shownCalendar());
        const auto number = std::find_if(views.begin(), views.end(), [&](const NSView& view) {
            return as<NSTextField>(view).stringValue().text() == std::to_string(day);
        });
        ASSERT_NE(number, views.end());
        const CGRect circle = std::prev(number)->frame();
        EXPECT_EQ(circle.size.width, 26);
        EXPECT_EQ(circle.size.height, 26);
        EXPECT_TRUE(rectOf(circle).intersects(rectOf(number->frame())));
    });
}

TEST_F(CalendarDisplayTest, StaysClosedWithTheReleaseOfThePressThatClosedIt) {
    run([&](const Platform& /*platform*/) {
        const auto clickNumbered = [&](std::int64_t number) {
            doubles::click(buttonOf("Velmo.Clock"), {.type = EventType::leftMouseUp, .eventNumber = number});
            runFor(0.2);
        };
        clickNumbered(3);
        EXPECT_TRUE(shownCalendar());
        // A press outside of it closes it, as the system does.
        system.currentEvent = doubles::makeEvent({.type = EventType::leftMouseDown, .eventNumber = 4});
        Message<"NSPopover", false, "close", void>::send(system.popover.get());
        EXPECT_FALSE(shownCalendar());
        clickNumbered(4);
        EXPECT_FALSE(shownCalendar());
        clickNumbered(5);
        EXPECT_TRUE(shownCalendar());
    });
}

TEST_F(CalendarDisplayTest, GrowsWhereThePopoverHasPutIt) {
    run([&](const Platform& /*platform*/) {
        click("Velmo.Clock");
        const auto next = named<NSButton>(shownCalendar(), "Next month");
        ASSERT_TRUE(next);
        const auto content = Message<"NSView", false, "superview", NSView>::send(next.get());
        Message<"NSView", false, "setFrameOrigin:", void, CGPoint>::send(content.get(), CGPoint{13, 7});
        const double height = content.frame().size.height;
        // Not all months of a year have the same number of weeks.
        for (int month = 0; month < 12 && content.frame().size.height == height; ++month)
            press(next);
        EXPECT_NE(content.frame().size.height, height);
        EXPECT_EQ(content.frame().origin.x, 13);
        EXPECT_EQ(content.frame().origin.y, 7);
    });
}

}  // namespace
}  // namespace velmo::macos
