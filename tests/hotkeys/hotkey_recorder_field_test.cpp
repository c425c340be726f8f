#include "hotkeys/hotkey_recorder_field.h"

#include "platform/simulated/simulated_desktop.h"
#include "preferences/preferences.h"
#include "views/view_outline.h"
#include "views/view_search.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

constexpr const char* waiting = "Press keys… (Esc cancels)";
constexpr const char* remove = "Remove shortcut";

class HotkeyRecorderFieldTest : public testing::Test {
protected:
    void pressKey(std::uint16_t keyCode, ModifierFlags flags, const char* characters) {
        Event event{EventType::keyDown, flags};
        event.keyCode = keyCode;
        event.charactersIgnoringModifiers = characters;
        desktop_.events().deliverLocally(event);
    }
    std::vector<std::string> texts() { return textsOf(field_.body()); }
    /// The label of the record button.
    View label() { return findAll<Button>(row_ = field_.body()).front()->children.front(); }

    SimulatedDesktop desktop_;
    Preferences preferences_{desktop_.userDefaults()};
    HotkeyRecorderField field_{"Show or hide items", preferences_.hotkey, desktop_.events()};
    HotkeyBinding binding_{4, modifier::command, "⌘H"};
    View row_;
};

TEST_F(HotkeyRecorderFieldTest, IsOneCentredRow) {
    preferences_.hotkey.set(binding_);
    const View row = field_.body();
    EXPECT_EQ(std::get<HStack>(row.content), (HStack{VerticalAlignment::center, std::nullopt}));
    ASSERT_EQ(row.children.size(), 3U);
    EXPECT_TRUE(says(row.children[0], "Show or hide items"));
    EXPECT_TRUE(says(row.children[1], "⌘H"));
    EXPECT_TRUE(says(row.children[2], remove));
    EXPECT_TRUE(findAll<Spacer>(row).empty());
}

TEST_F(HotkeyRecorderFieldTest, LooksAsOutlined) {
    expectOutline(field_.body(), "recorder");
    preferences_.hotkey.set(binding_);
    expectOutline(field_.body(), "recorder_with_shortcut");
    press(field_.body(), "⌘H");
    expectOutline(field_.body(), "recorder_recording");
}

TEST_F(HotkeyRecorderFieldTest, OffersToRecordWhereThereIsNoShortcut) {
    EXPECT_EQ(texts(), (std::vector<std::string>{"Show or hide items", "Record Shortcut"}));
    EXPECT_FALSE(shows(field_.body(), remove));
}

TEST_F(HotkeyRecorderFieldTest, HasALabelOfAFixedLeastWidth) {
    const Frame frame{.minWidth = 130};
    EXPECT_EQ(modifierOf<Frame>(label()), frame);
    preferences_.hotkey.set(binding_);
    EXPECT_EQ(modifierOf<Frame>(label()), frame);
    EXPECT_EQ(frame.alignment, HorizontalAlignment::center);
}

TEST_F(HotkeyRecorderFieldTest, UsesTheMonospacedFontOnlyForAShortcut) {
    EXPECT_EQ(modifierOf<Font>(label()), std::nullopt);
    preferences_.hotkey.set(binding_);
    ASSERT_TRUE(modifierOf<Font>(label()));
    EXPECT_TRUE(modifierOf<Font>(label())->isMonospaced);
    press(field_.body(), "⌘H");
    EXPECT_EQ(modifierOf<Font>(label()), std::nullopt);
}

TEST_F(HotkeyRecorderFieldTest, RecordsAShortcut) {
    press(field_.body(), "Record Shortcut");
    EXPECT_EQ(texts(), (std::vector<std::string>{"Show or hide items", waiting}));
    pressKey(0, modifier::command, "a");
    EXPECT_EQ(preferences_.hotkey.value(), (HotkeyBinding{0, 0x100000, "⌘A"}));
    EXPECT_TRUE(desktop_.userDefaults().dataForKey("hotkey"));
    EXPECT_TRUE(shows(field_.body(), "⌘A"));
    EXPECT_TRUE(shows(field_.body(), remove));
}

TEST_F(HotkeyRecorderFieldTest, ReplacesTheEarlierShortcut) {
    preferences_.hotkey.set(binding_);
    press(field_.body(), "⌘H");
    EXPECT_TRUE(shows(field_.body(), waiting));
    EXPECT_FALSE(shows(field_.body(), remove));
    EXPECT_EQ(preferences_.hotkey.value(), binding_);
    pressKey(96, 0, "");
    EXPECT_EQ(preferences_.hotkey.value(), (HotkeyBinding{96, 0, "F5"}));
}

TEST_F(HotkeyRecorderFieldTest, LeavesTheShortcutWhereEscapeCancels) {
    preferences_.hotkey.set(binding_);
    press(field_.body(), "⌘H");
    pressKey(53, modifier::command, "");
    EXPECT_EQ(preferences_.hotkey.value(), binding_);
    EXPECT_TRUE(shows(field_.body(), "⌘H"));
}

TEST_F(HotkeyRecorderFieldTest, CancelsByItsButton) {
    preferences_.hotkey.set(binding_);
    press(field_.body(), "⌘H");
    press(field_.body(), waiting);
    EXPECT_FALSE(field_.recorder.isRecording.value());
    EXPECT_EQ(preferences_.hotkey.value(), binding_);
    EXPECT_TRUE(shows(field_.body(), "⌘H"));
}

TEST_F(HotkeyRecorderFieldTest, RemovesTheShortcut) {
    preferences_.hotkey.set(binding_);
    const View row = field_.body();
    const View* button = find<Button>(row, remove);
    ASSERT_NE(button, nullptr);
    EXPECT_EQ(std::get<Button>(button->content).style, ButtonStyle::borderless);
    EXPECT_EQ(toolTipOf(*button), remove);
    EXPECT_TRUE(says(button->children.front(), "xmark.circle.fill"));
    EXPECT_EQ(modifierOf<Foreground>(button->children.front()), (Foreground{{ColorRole::secondary, 1}}));
    press(row, remove);
    EXPECT_EQ(preferences_.hotkey.value(), std::nullopt);
    EXPECT_FALSE(desktop_.userDefaults().dataForKey("hotkey"));
    EXPECT_TRUE(shows(field_.body(), "Record Shortcut"));
}

TEST_F(HotkeyRecorderFieldTest, WaitsOnWithoutAMonitorUntilItIsPressedAgain) {
    desktop_.events().setRefusedMonitors(maskOf(EventType::keyDown));
    press(field_.body(), "Record Shortcut");
    EXPECT_TRUE(shows(field_.body(), waiting));
    press(field_.body(), waiting);
    EXPECT_TRUE(shows(field_.body(), "Record Shortcut"));
}

TEST_F(HotkeyRecorderFieldTest, ButtonsSayWhichShortcutTheyAreFor) {
    EXPECT_TRUE(shows(field_.body(), "Show or hide items, Record Shortcut"));
    preferences_.hotkey.set(binding_);
    EXPECT_TRUE(shows(field_.body(), "Show or hide items, ⌘H"));
    EXPECT_TRUE(shows(field_.body(), "Show or hide items, Remove shortcut"));
}

TEST_F(HotkeyRecorderFieldTest, HasARecorderOfItsOwn) {
    HotkeyRecorderField other("Open the hidden items panel", preferences_.panelHotkey, desktop_.events());
    press(field_.body(), "Record Shortcut");
    press(other.body(), "Record Shortcut");
    EXPECT_TRUE(shows(field_.body(), waiting));
    EXPECT_TRUE(shows(other.body(), waiting));
}

}  // namespace
}  // namespace velmo
