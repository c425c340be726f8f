#include "app/run_application.h"
#include "event.h"
#include "macos/foundation/ns_number.h"
#include "macos/foundation/ns_user_defaults.h"
#include "macos/macos_desktop.h"
#include "platform/macos/doubles/array_of.h"
#include "platform/macos/doubles/menu_bar.h"
#include "platform/macos/doubles/record_class.h"
#include "platform/macos/macos_test.h"

#include <memory>
#include <string>
#include <vector>

namespace velmo::macos {
namespace {

using doubles::member;
using doubles::numberMember;

/// The whole program, as it is on a Mac but for the doubles.
class MacosProgramTest : public MacosTest {
protected:
    MacosProgramTest() {
        system.screens = {doubles::makeScreen(
            {.frame = {0, 0, 1440, 900}, .visibleFrame = {0, 0, 1440, 876}, .backingScaleFactor = 2})};
        // There are no windows without a display.
        NSUserDefaults::standard().setBool(true, NSString::from("hasCompletedFirstLaunch"));
        // Far from the menu bar.
        system.mouseLocation = {700, 400};
        system.windowList = doubles::arrayOf({});
    }
    ~MacosProgramTest() override {
        for (const char* key : {"hasCompletedFirstLaunch", "autoRehide", "rehideDelay", "showOnScroll",
                                "clockEnabled", "clockFormat", "hotkey"})
            NSUserDefaults::standard().removeObject(NSString::from(key));
    }

    /// Runs the program, and the function while it does.
    void run(const std::function<void()>& function) {
        system.whileApplicationRuns = function;
        const MacosDesktop desktop;
        runApplication(desktop.platform());
    }

    Object itemNamed(const std::string& name) const {
        for (const Object& item : system.statusItems) {
            if (as<NSString>(member(item, "autosaveName")).text() == name)
                return item;
        }
        return {};
    }
    double lengthOf(const std::string& name) const { return numberMember(itemNamed(name), "length"); }
    bool isRevealed() const { return lengthOf("Velmo.Divider") == 12; }

    void click(const std::string& name, const Event& event) {
        system.currentEvent = doubles::makeEvent(event);
        doubles::click(member(itemNamed(name), "button"));
        system.currentEvent = {};
    }
    void clickToggle() { click("Velmo.Toggle", {.type = EventType::leftMouseUp}); }
};

TEST_F(MacosProgramTest, StartsAsAnAccessoryWithItsItemsHidingTheRest) {
    run([&] {
        EXPECT_EQ(system.activationPolicy, 1);
        ASSERT_EQ(system.statusItems.size(), 3U);
        EXPECT_EQ(lengthOf("Velmo.Toggle"), -1);
        EXPECT_EQ(lengthOf("Velmo.Divider"), 10000);
        EXPECT_EQ(lengthOf("Velmo.AlwaysHiddenDivider"), 10000);
        EXPECT_EQ(numberMember(itemNamed("Velmo.AlwaysHiddenDivider"), "isVisible"), 0);
        const Object button = member(itemNamed("Velmo.Toggle"), "button");
        EXPECT_EQ(as<NSString>(member(member(button, "image"), "symbol")).text(), "chevron.left");
        EXPECT_EQ(numberMember(button, "mask"), 20);
    });
    EXPECT_TRUE(system.statusItems.empty());
    EXPECT_TRUE(system.monitors.empty());
    EXPECT_EQ(system.handlerCount, 0);
}

TEST_F(MacosProgramTest, RevealsAndHidesWithClicksOnTheToggle) {
    run([&] {
        clickToggle();
        EXPECT_TRUE(isRevealed());
        EXPECT_EQ(lengthOf("Velmo.AlwaysHiddenDivider"), 10000);
        const Object button = member(itemNamed("Velmo.Toggle"), "button");
        EXPECT_EQ(as<NSString>(member(member(button, "image"), "symbol")).text(), "chevron.right");
        clickToggle();
        EXPECT_FALSE(isRevealed());
        click("Velmo.Toggle", {.type = EventType::leftMouseUp, .modifierFlags = modifier::option});
        EXPECT_EQ(lengthOf("Velmo.AlwaysHiddenDivider"), 12);
    });
}

TEST_F(MacosProgramTest, HidesAgainOnItsTimer) {
    NSUserDefaults::standard().setDouble(1, NSString::from("rehideDelay"));
    run([&] {
        clickToggle();
        runFor(0.8);
        EXPECT_TRUE(isRevealed());
        EXPECT_TRUE(runUntil([&] { return !isRevealed(); }));
    });
}

TEST_F(MacosProgramTest, HidesAfterAClickElsewhereAndNotWhileAMenuIsOpen) {
    run([&] {
        clickToggle();
        const Object menu = doubles::arrayOf({});
        const NSMutableDictionary bounds = NSMutableDictionary::create();
        for (const auto& [key, value] :
             {std::pair("X", 0.0), {"Y", 24.0}, {"Width", 200.0}, {"Height", 300.0}})
            bounds.setObject(NSNumber::with(value), NSString::from(key));
        const NSMutableDictionary window = NSMutableDictionary::create();
        window.setObject(NSNumber::with(NSInteger{101}), NSString::from("kCGWindowLayer"));
        window.setObject(NSNumber::with(NSInteger{1}), NSString::from("kCGWindowOwnerPID"));
        window.setObject(bounds, NSString::from("kCGWindowBounds"));
        system.windowList = doubles::arrayOf({window});
        const NSEvent press = doubles::makeEvent({.type = EventType::leftMouseDown});
        doubles::tellGlobalMonitors(press);
        runFor(0.4);
        EXPECT_TRUE(isRevealed());
        system.windowList = doubles::arrayOf({});
        doubles::tellGlobalMonitors(press);
        EXPECT_TRUE(isRevealed());
        EXPECT_TRUE(runUntil([&] { return !isRevealed(); }));
    });
}

TEST_F(MacosProgramTest, TogglesWithItsShortcut) {
    const std::string binding = R"({"keyCode":40,"modifiers":1048576,"display":"⌘K"})";
    NSUserDefaults::standard().setObject(NSData::from({binding.begin(), binding.end()}),
                                         NSString::from("hotkey"));
    run([&] {
        ASSERT_EQ(system.hotKeys.size(), 1U);
        const auto key = system.hotKeys.begin()->second;
        EXPECT_EQ(key, (doubles::RegisteredHotKey{40, 0x100, 0x564c4d4f, key.id}));
        EXPECT_EQ(doubles::sendHotKeyEvent(key.signature, key.id), 0);
        EXPECT_FALSE(isRevealed());
        EXPECT_TRUE(runUntil([&] { return isRevealed(); }));
    });
    EXPECT_TRUE(system.hotKeys.empty());
}

TEST_F(MacosProgramTest, ShowsItsMenuAndQuits) {
    run([&] {
        std::vector<std::string> titles;
        system.whileMenuIsOpen = [&] {
            for (const Object& item : system.shownMenus.back().items)
                titles.push_back(Message<"NSMenuItem", false, "title", NSString>::send(item.get()).text());
            doubles::choose(system.shownMenus.back().items.back());
        };
        click("Velmo.Toggle", {.type = EventType::rightMouseUp});
        ASSERT_GE(titles.size(), 2U);
        EXPECT_EQ(titles.front(), "Show Hidden Items");
        EXPECT_EQ(titles.back(), "Quit Velmo");
        EXPECT_EQ(system.terminations, 1);
    });
}

TEST_F(MacosProgramTest, ShowsAClockInItsFormat) {
    NSUserDefaults::standard().setBool(true, NSString::from("clockEnabled"));
    NSUserDefaults::standard().setObject(NSString::from("'It is' yyyy"), NSString::from("clockFormat"));
    run([&] {
        const Object button = member(itemNamed("Velmo.Clock"), "button");
        EXPECT_EQ(as<NSString>(member(button, "title")).text().substr(0, 8), "It is 20");
        EXPECT_EQ(as<NSString>(member(member(button, "font"), "kind")).text(), "digits");
    });
}

}  // namespace
}  // namespace velmo::macos
