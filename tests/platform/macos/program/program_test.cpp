#include "platform/macos/program/program_test.h"

#include "app/run_application.h"
#include "macos/appkit/ns_menu_item.h"
#include "macos/macos_desktop.h"
#include "platform/macos/doubles/array_of.h"
#include "platform/macos/doubles/window_list.h"

#include <utility>
#include <vector>

namespace velmo::macos {

ProgramStage::ProgramStage() {
    system.screens = {doubles::makeScreen(
        {.frame = {0, 0, 1440, 900}, .visibleFrame = {0, 0, 1440, 876}, .backingScaleFactor = 2})};
    forgetSettings();
    defaults().setBool(true, NSString::from("hasCompletedFirstLaunch"));
    // Far from the menu bar.
    system.mouseLocation = {700, 400};
    system.windowList = doubles::arrayOf({});
}

ProgramStage::~ProgramStage() {
    forgetSettings();
}

void ProgramStage::run(const std::function<void()>& function) {
    system.whileApplicationRuns = function;
    const MacosDesktop desktop;
    runApplication(desktop.platform());
}

TEST_F(MacosProgramTest, HasAMainMenuForTheKeysOfWindowsAndTexts) {
    run([&] {
        ASSERT_EQ(system.submenus.size(), 3U);
        std::vector<std::string> keys;
        for (const Object& menu : system.submenus) {
            for (const Object& item : as<NSArray>(member(menu, "items")).all<NSObject>()) {
                const auto key = Message<"NSMenuItem", false, "keyEquivalent", NSString>::send(item.get());
                const auto title = Message<"NSMenuItem", false, "title", NSString>::send(item.get());
                const bool isLine = Message<"NSMenuItem", false, "isSeparatorItem", bool>::send(item.get());
                // Whoever has the keyboard performs it, or is asked for what undoes.
                const bool undoes = title.text() == "Undo" || title.text() == "Redo";
                const auto target = Message<"NSMenuItem", false, "target", Object>::send(item.get());
                EXPECT_EQ(static_cast<bool>(target), undoes) << title.text();
                keys.push_back((isLine ? "" : title.text()) + ' ' + key.text());
            }
        }
        EXPECT_EQ(keys, (std::vector<std::string>{"Quit Velmo q", "Undo z", "Redo Z", " ", "Cut x", "Copy c",
                                                  "Paste v", "Select All a", "Close w", "Minimize m"}));
    });
    // It would have a target that has gone.
    EXPECT_FALSE(member(system.application, "mainMenu"));
}

TEST_F(MacosProgramTest, StartsAsAnAccessoryWithItsItems) {
    run([&] {
        EXPECT_EQ(system.activationPolicy, 1);
        EXPECT_EQ(system.statusItems.size(), 3U);
        EXPECT_EQ(numberMember(doubles::itemNamed("Velmo.Toggle"), "length"), -1);
        EXPECT_EQ(numberMember(buttonOf("Velmo.Toggle"), "mask"), 20);
    });
}

TEST_F(MacosProgramTest, OpensItsMenuJustUnderTheItem) {
    run([&] {
        click("Velmo.Toggle", {.type = EventType::rightMouseUp});
        ASSERT_EQ(system.shownMenus.size(), 1U);
        // From the top of its button.
        EXPECT_EQ(system.shownMenus.back().location, (Point{0, 26}));
    });
}

TEST_F(MacosProgramTest, RegistersItsShortcutUnderASignatureOfItsOwn) {
    const std::string binding = R"({"keyCode":40,"modifiers":1048576,"display":"⌘K"})";
    defaults().setObject(NSData::from({binding.begin(), binding.end()}), NSString::from("hotkey"));
    run([&] {
        ASSERT_EQ(system.hotKeys.size(), 1U);
        const auto key = system.hotKeys.begin()->second;
        EXPECT_EQ(key, (doubles::RegisteredHotKey{40, 0x100, 0x564c4d4f, key.id}));
    });
}

TEST_F(MacosProgramTest, HasAClockWithDigitsOfOneWidth) {
    defaults().setBool(true, NSString::from("clockEnabled"));
    run([&] {
        EXPECT_EQ(as<NSString>(member(member(buttonOf("Velmo.Clock"), "font"), "kind")).text(), "digits");
    });
}

TEST_F(MacosProgramTest, PicturesInPixelsWhatIsRevealed) {
    system.mayCapture = true;
    system.windowList = doubles::arrayOf({doubles::itemWindow(7, "Mail", {900, 0, 30.5, 24}),
                                          doubles::itemWindow(8, "Notes", {1200, 0, 30, 24})});
    system.shareableWindows = {doubles::arrayOf({doubles::shareableWindow(7), doubles::shareableWindow(8)})};
    run([&] {
        click("Velmo.Toggle", {.type = EventType::leftMouseUp});
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

}  // namespace velmo::macos
