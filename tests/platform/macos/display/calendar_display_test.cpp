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

    /// The content of the one popover; none while there is none.
    static NSView calendar() {
        const auto windows =
            Message<"NSApplication", false, "windows", NSArray>::send(NSApplication::shared().get());
        for (const NSWindow& window : windows.all<NSWindow>()) {
            if (!window.isVisible())
                continue;
            for (const NSTextField& label : allBelow<NSTextField>(contentOf(window))) {
                if (label.stringValue().text().starts_with("Week "))
                    return contentOf(window);
            }
        }
        return {};
    }
};

TEST_F(CalendarDisplayTest, OpensUnderTheClockAndTurnsItsMonths) {
    run([&](const Platform& platform) {
        click("Velmo.Clock");
        const NSView content = calendar();
        ASSERT_TRUE(content);
        const auto month = [&](int distance) {
            const auto& current = platform.dates.currentCalendar();
            const Date now = platform.runLoop.now();
            return platform.dates.formatted(*current.dateByAdding(CalendarUnit::month, distance, now),
                                            DateStyle::monthAndYear);
        };
        EXPECT_TRUE(shows(content, month(0)));
        // GNUstep puts it above the clock.
        Message<"NSWindow", false, "setFrameOrigin:", void, CGPoint>::send(content.window().get(),
                                                                           CGPoint{900, 300});
        picture("calendar");
        const auto next = named<NSButton>(content, "Next month");
        ASSERT_TRUE(next);
        press(next);
        EXPECT_TRUE(shows(content, month(1)));
        EXPECT_FALSE(shows(content, month(0)));
        clickInto(named<NSButton>(content, "Previous month"));
        EXPECT_TRUE(shows(content, month(0)));
        clickInto(named<NSButton>(content, "Previous month"));
        EXPECT_TRUE(shows(content, month(-1)));
        const auto today = named<NSButton>(content, "Today");
        ASSERT_TRUE(today);
        press(today);
        EXPECT_TRUE(shows(content, month(0)));
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
        EXPECT_EQ(system.popoverSizes.back().height, calendar().bounds().size.height);
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
        const NSView content = calendar();
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
        const auto views = viewsBelow(calendar());
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

TEST_F(CalendarDisplayTest, ClosesWithTheNextClickOnTheClock) {
    run([&](const Platform& /*platform*/) {
        click("Velmo.Clock");
        EXPECT_TRUE(calendar());
        click("Velmo.Clock");
        EXPECT_FALSE(calendar());
        click("Velmo.Clock");
        EXPECT_TRUE(calendar());
    });
}

TEST_F(CalendarDisplayTest, StaysClosedWithTheReleaseOfThePressThatClosedIt) {
    run([&](const Platform& /*platform*/) {
        const auto clickNumbered = [&](std::int64_t number) {
            system.currentEvent = doubles::makeEvent({.type = EventType::leftMouseUp, .eventNumber = number});
            doubles::click(buttonOf("Velmo.Clock"));
            system.currentEvent = {};
            runFor(0.2);
        };
        clickNumbered(3);
        EXPECT_TRUE(calendar());
        // A press outside of it closes it, as the system does.
        system.currentEvent = doubles::makeEvent({.type = EventType::leftMouseDown, .eventNumber = 4});
        Message<"NSPopover", false, "close", void>::send(system.popover.get());
        EXPECT_FALSE(calendar());
        clickNumbered(4);
        EXPECT_FALSE(calendar());
        clickNumbered(5);
        EXPECT_TRUE(calendar());
    });
}

TEST_F(CalendarDisplayTest, GrowsWhereThePopoverHasPutIt) {
    run([&](const Platform& /*platform*/) {
        click("Velmo.Clock");
        const auto next = named<NSButton>(calendar(), "Next month");
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

TEST_F(CalendarDisplayTest, ShowsTheTimeAsItGoesOn) {
    run([&](const Platform& platform) {
        click("Velmo.Clock");
        const NSView content = calendar();
        ASSERT_TRUE(content);
        const auto time = [&] { return platform.dates.formatted(platform.runLoop.now(), DateStyle::time); };
        const std::string first = time();
        EXPECT_TRUE(runUntil([&] { return time() != first && shows(content, time()); }));
    });
}

}  // namespace
}  // namespace velmo::macos
