#include "macos/foundation/ns_data.h"
#include "macos/foundation/ns_notification_center.h"
#include "platform/macos/doubles/array_of.h"
#include "platform/macos/doubles/menu_bar.h"
#include "platform/macos/doubles/window_list.h"
#include "platform/macos/program/program_test.h"

namespace velmo::macos {
namespace {

class MacosScenarioTest : public MacosProgramTest {
protected:
    static void scroll(double deltaX, double deltaY) {
        doubles::tellGlobalMonitors(doubles::makeEvent(
            {.type = EventType::scrollWheel, .scrollingDeltaX = deltaX, .scrollingDeltaY = deltaY}));
        runFor(0.05);
    }
    /// As the system tells the owner of the last tracking area.
    void pointerEnters() { tellTrackingOwner<"mouseEntered:">(); }
    void pointerLeaves() { tellTrackingOwner<"mouseExited:">(); }
    static NSTimeZone zone(const char* name) {
        return Message<"NSTimeZone", true, "timeZoneWithName:", NSTimeZone, NSString>::send(
            NSTimeZone::classObject(), NSString::from(name));
    }

private:
    template <FixedString selector>
    void tellTrackingOwner() {
        const auto owner =
            Message<"NSTrackingArea", false, "owner", Object>::send(system.trackingAreas.back().get());
        Message<"NSResponder", false, selector, void, Object>::send(
            owner.get(), doubles::makeEvent({.type = EventType::mouseEntered}));
    }
};

TEST_F(MacosScenarioTest, ScrollingOnTheMenuBarShowsAndHides) {
    setOn("showOnScroll");
    run([&] {
        scroll(0, 10);
        EXPECT_FALSE(isRevealed());
        system.mouseLocation = {700, 890};
        scroll(4, 0);
        EXPECT_FALSE(isRevealed());
        scroll(3, 3);
        EXPECT_TRUE(isRevealed());
        scroll(0, 10);
        EXPECT_TRUE(isRevealed());
        runFor(0.65);
        scroll(0, -10);
        EXPECT_FALSE(isRevealed());
    });
}

TEST_F(MacosScenarioTest, HoveringOverTheToggleRevealsALittleLater) {
    setOn("showOnHover");
    run([&] {
        ASSERT_EQ(system.trackingAreas.size(), 1U);
        pointerEnters();
        runFor(0.1);
        pointerLeaves();
        runFor(0.3);
        EXPECT_FALSE(isRevealed());
        pointerEnters();
        runFor(0.1);
        EXPECT_FALSE(isRevealed());
        EXPECT_TRUE(runUntil([&] { return isRevealed(); }));
    });
    EXPECT_TRUE(system.trackingAreas.empty());
}

TEST_F(MacosScenarioTest, AClickOnADividerHides) {
    run([&] {
        click("Velmo.Divider", {.type = EventType::leftMouseUp});
        EXPECT_FALSE(isRevealed());
        EXPECT_EQ(numberMember(member(itemNamed("Velmo.Divider"), "button"), "isEnabled"), 0);
        clickToggle();
        EXPECT_EQ(numberMember(member(itemNamed("Velmo.Divider"), "button"), "isEnabled"), 1);
        click("Velmo.Divider", {.type = EventType::leftMouseUp});
        EXPECT_FALSE(isRevealed());
    });
}

TEST_F(MacosScenarioTest, NothingHidesWhileThePointerIsInTheMenuBar) {
    defaults().setDouble(1, NSString::from("rehideDelay"));
    run([&] {
        clickToggle();
        system.mouseLocation = {700, 890};
        runFor(1.4);
        EXPECT_TRUE(isRevealed());
        system.mouseLocation = {700, 400};
        EXPECT_TRUE(runUntil([&] { return !isRevealed(); }));
    });
}

TEST_F(MacosScenarioTest, NothingHidesWhileTheMenuIsOpen) {
    defaults().setDouble(1, NSString::from("rehideDelay"));
    run([&] {
        clickToggle();
        system.whileMenuIsOpen = [&] {
            runFor(1.3);
            EXPECT_TRUE(isRevealed());
        };
        click("Velmo.Toggle", {.type = EventType::rightMouseUp});
        runFor(0.7);
        EXPECT_TRUE(isRevealed());
        EXPECT_TRUE(runUntil([&] { return !isRevealed(); }));
    });
}

TEST_F(MacosScenarioTest, TheAlwaysHiddenSectionHasItsDividerAndItsMenuItem) {
    setOn("alwaysHiddenEnabled");
    run([&] {
        EXPECT_EQ(numberMember(itemNamed("Velmo.AlwaysHiddenDivider"), "isVisible"), 1);
        system.whileMenuIsOpen = [&] { choose("Show Always-Hidden Items"); };
        click("Velmo.Toggle", {.type = EventType::rightMouseUp});
        EXPECT_EQ(lengthOf("Velmo.AlwaysHiddenDivider"), 12);
        system.whileMenuIsOpen = [&] { choose("Hide Always-Hidden Items"); };
        click("Velmo.Toggle", {.type = EventType::rightMouseUp});
        EXPECT_EQ(lengthOf("Velmo.AlwaysHiddenDivider"), 10000);
        EXPECT_FALSE(isRevealed());
    });
}

TEST_F(MacosScenarioTest, TheClockFollowsTheTimeZoneAtOnce) {
    setOn("clockEnabled");
    defaults().setObject(NSString::from("VV"), NSString::from("clockFormat"));
    system.timeZone = zone("Asia/Tokyo");
    run([&] {
        EXPECT_EQ(titleOf("Velmo.Clock"), "Asia/Tokyo");
        system.timeZone = zone("Asia/Kolkata");
        Message<"NSNotificationCenter", false, "postNotificationName:object:", void, NSString, Object>::send(
            NSNotificationCenter::defaultCenter().get(),
            NSString::from("NSSystemTimeZoneDidChangeNotification"), Object());
        runFor(0.1);
        EXPECT_EQ(titleOf("Velmo.Clock"), "Asia/Kolkata");
    });
}

TEST_F(MacosScenarioTest, TheClocksMenuOpensTheSystemsOptionsAndHidesIt) {
    setOn("clockEnabled");
    run([&] {
        system.whileMenuIsOpen = [&] {
            EXPECT_EQ(menuTitles(), (std::vector<std::string>{"Clock Settings…", "System Clock Options…", "",
                                                              "Hide velmo Clock"}));
            choose("System Clock Options…");
        };
        click("Velmo.Clock", {.type = EventType::rightMouseUp});
        EXPECT_EQ(
            system.openedAddresses,
            std::vector<std::string>{"x-apple.systempreferences:com.apple.ControlCenter-Settings.extension"});
        system.whileMenuIsOpen = [&] { choose("Hide velmo Clock"); };
        click("Velmo.Clock", {.type = EventType::rightMouseUp});
        EXPECT_TRUE(runUntil([&] { return !itemNamed("Velmo.Clock"); }));
        EXPECT_FALSE(defaults().boolForKey(NSString::from("clockEnabled")));
    });
}

TEST_F(MacosScenarioTest, WhatIsRevealedIsPicturedInPixels) {
    system.mayCapture = true;
    system.windowList = doubles::arrayOf({doubles::itemWindow(7, "Mail", {900, 0, 30.5, 24}),
                                          doubles::itemWindow(8, "Notes", {1200, 0, 30, 24})});
    system.shareableWindows = {doubles::arrayOf({doubles::shareableWindow(7), doubles::shareableWindow(8)})};
    run([&] {
        clickToggle();
        runFor(0.3);
        EXPECT_TRUE(system.captures.empty());
        ASSERT_TRUE(runUntil([&] { return !system.captures.empty(); }));
        runFor(0.2);
        // That to the left of the divider, without the cursor, at the best resolution.
        ASSERT_EQ(system.captures.size(), 1U);
        EXPECT_EQ(system.captures.front(), (doubles::RequestedCapture{.window = 7,
                                                                      .width = 61,
                                                                      .height = 48,
                                                                      .showsCursor = false,
                                                                      .resolution = 1,
                                                                      .pixelFormat = 0x42475241}));
        EXPECT_EQ(system.contentRequests, (std::vector<std::pair<bool, bool>>{{false, true}}));
    });
}

TEST_F(MacosScenarioTest, AShortcutThatCannotBeReadIsForgotten) {
    const std::string incomplete = R"({"keyCode":40,"modifiers":1048576})";
    const std::string complete = R"({"keyCode":40,"modifiers":1048576,"display":"⌘K"})";
    const auto store = [](const std::string& text, const char* key) {
        defaults().setObject(NSData::from({text.begin(), text.end()}), NSString::from(key));
    };
    store(incomplete, "hotkey");
    store(complete, "panelHotkey");
    run([&] {
        EXPECT_FALSE(defaults().dataForKey(NSString::from("hotkey")));
        const auto kept = defaults().dataForKey(NSString::from("panelHotkey")).bytes();
        EXPECT_EQ(std::string(kept.begin(), kept.end()), complete);
        EXPECT_EQ(system.hotKeys.size(), 1U);
    });
}

}  // namespace
}  // namespace velmo::macos
