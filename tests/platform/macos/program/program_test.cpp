#include "platform/macos/program/program_test.h"

#include "app/run_application.h"
#include "macos/appkit/ns_menu_item.h"
#include "macos/macos_desktop.h"
#include "platform/macos/doubles/array_of.h"
#include "platform/macos/doubles/menu_bar.h"
#include "platform/macos/doubles/window_list.h"

namespace velmo::macos {
namespace {

/// Empty for a separator, whatever GNUstep writes there.
std::string titleOfItem(const Object& item) {
    if (Message<"NSMenuItem", false, "isSeparatorItem", bool>::send(item.get()))
        return {};
    return Message<"NSMenuItem", false, "title", NSString>::send(item.get()).text();
}

}  // namespace

MacosProgramTest::MacosProgramTest() {
    system.screens = {doubles::makeScreen(
        {.frame = {0, 0, 1440, 900}, .visibleFrame = {0, 0, 1440, 876}, .backingScaleFactor = 2})};
    forgetSettings();
    // There are no windows without a display.
    setOn("hasCompletedFirstLaunch");
    // Far from the menu bar.
    system.mouseLocation = {700, 400};
    system.windowList = doubles::arrayOf({});
}

MacosProgramTest::~MacosProgramTest() {
    forgetSettings();
}

void MacosProgramTest::forgetSettings() {
    for (const char* key :
         {"hasCompletedFirstLaunch", "autoRehide", "rehideDelay", "showOnHover", "showOnScroll",
          "alwaysHiddenEnabled", "clockEnabled", "clockFormat", "hotkey", "panelHotkey"})
        defaults().removeObject(NSString::from(key));
}

void MacosProgramTest::run(const std::function<void()>& function) {
    system.whileApplicationRuns = function;
    const MacosDesktop desktop;
    runApplication(desktop.platform());
}

Object MacosProgramTest::itemNamed(const std::string& name) const {
    for (const Object& item : system.statusItems) {
        if (as<NSString>(member(item, "autosaveName")).text() == name)
            return item;
    }
    return {};
}

std::string MacosProgramTest::titleOf(const std::string& name) const {
    return as<NSString>(member(member(itemNamed(name), "button"), "title")).text();
}

void MacosProgramTest::click(const std::string& name, const Event& event) {
    system.currentEvent = doubles::makeEvent(event);
    doubles::click(member(itemNamed(name), "button"));
    system.currentEvent = {};
}

std::vector<std::string> MacosProgramTest::menuTitles() const {
    std::vector<std::string> titles;
    for (const Object& item : system.shownMenus.back().items)
        titles.push_back(titleOfItem(item));
    return titles;
}

void MacosProgramTest::choose(const std::string& title) const {
    for (const Object& item : system.shownMenus.back().items) {
        if (titleOfItem(item) == title)
            return doubles::choose(item);
    }
    ADD_FAILURE() << "the menu has no " << title;
}

TEST_F(MacosProgramTest, HasAMainMenuForTheKeysOfWindowsAndTexts) {
    run([&] {
        ASSERT_EQ(system.submenus.size(), 3U);
        std::vector<std::string> keys;
        for (const Object& menu : system.submenus) {
            for (const Object& item : as<NSArray>(member(menu, "items")).all<NSObject>()) {
                // Whoever has the keyboard performs it.
                EXPECT_FALSE((Message<"NSMenuItem", false, "target", Object>::send(item.get())));
                const auto key = Message<"NSMenuItem", false, "keyEquivalent", NSString>::send(item.get());
                keys.push_back(titleOfItem(item) + ' ' + key.text());
            }
        }
        EXPECT_EQ(keys, (std::vector<std::string>{"Quit Velmo q", "Undo z", "Redo Z", " ", "Cut x", "Copy c",
                                                  "Paste v", "Select All a", "Close w", "Minimize m"}));
    });
}

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
        system.windowList = doubles::arrayOf({doubles::menuWindow()});
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
        system.whileMenuIsOpen = [&] {
            EXPECT_EQ(menuTitles(), (std::vector<std::string>{"Show Hidden Items", "Open Hidden Items Panel",
                                                              "", "Settings…", "", "Quit Velmo"}));
            choose("Quit Velmo");
        };
        click("Velmo.Toggle", {.type = EventType::rightMouseUp});
        // Just under the item, from the top of its button.
        EXPECT_EQ(system.shownMenus.back().location, (Point{0, 26}));
        EXPECT_EQ(system.terminations, 1);
    });
}

TEST_F(MacosProgramTest, ShowsAClockInItsFormat) {
    NSUserDefaults::standard().setBool(true, NSString::from("clockEnabled"));
    NSUserDefaults::standard().setObject(NSString::from("'It is' yyyy"), NSString::from("clockFormat"));
    run([&] {
        const Object button = member(itemNamed("Velmo.Clock"), "button");
        EXPECT_EQ(titleOf("Velmo.Clock").substr(0, 8), "It is 20");
        EXPECT_EQ(as<NSString>(member(member(button, "font"), "kind")).text(), "digits");
    });
}

}  // namespace velmo::macos
