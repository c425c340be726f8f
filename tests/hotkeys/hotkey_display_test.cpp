#include "hotkeys/hotkey_display.h"

#include <gtest/gtest.h>

#include <map>

namespace velmo {
namespace {

std::string display(std::uint16_t keyCode, ModifierFlags flags, std::optional<std::string> characters = {}) {
    Event event{EventType::keyDown, flags};
    event.keyCode = keyCode;
    event.charactersIgnoringModifiers = std::move(characters);
    return hotkeyDisplay(event);
}

TEST(HotkeyDisplay, NamesTheKeysThatTypeNothing) {
    const std::map<std::uint16_t, std::string> names{
        {36, "↩"},  {48, "⇥"},   {49, "Space"}, {51, "⌫"},    {53, "⎋"},    {76, "⌤"},    {117, "⌦"},
        {115, "↖"}, {119, "↘"},  {116, "⇞"},    {121, "⇟"},   {123, "←"},   {124, "→"},   {125, "↓"},
        {126, "↑"}, {122, "F1"}, {120, "F2"},   {99, "F3"},   {118, "F4"},  {96, "F5"},   {97, "F6"},
        {98, "F7"}, {100, "F8"}, {101, "F9"},   {109, "F10"}, {103, "F11"}, {111, "F12"},
    };
    for (std::uint16_t keyCode = 0; keyCode < 128; ++keyCode) {
        const auto name = names.find(keyCode);
        EXPECT_EQ(display(keyCode, 0, "q"), name == names.end() ? "Q" : name->second) << keyCode;
    }
}

TEST(HotkeyDisplay, HasTheModifiersInAFixedOrder) {
    using namespace modifier;
    EXPECT_EQ(display(40, command | shift, "k"), "⇧⌘K");
    EXPECT_EQ(display(40, command | shift | option | control, "k"), "⌃⌥⇧⌘K");
    EXPECT_EQ(display(40, option | control, "k"), "⌃⌥K");
    EXPECT_EQ(display(49, command, " "), "⌘Space");
}

TEST(HotkeyDisplay, LeavesOtherFlagsOut) {
    using namespace modifier;
    EXPECT_EQ(display(0, capsLock | numericPad | function | command, "a"), "⌘A");
}

TEST(HotkeyDisplay, ShowsCharactersInCapitals) {
    EXPECT_EQ(display(33, modifier::command, "ü"), "⌘Ü");
    EXPECT_EQ(display(27, modifier::command, "ß"), "⌘SS");
    EXPECT_EQ(display(24, modifier::command, "+"), "⌘+");
}

TEST(HotkeyDisplay, ShowsAQuestionMarkWhereTheSystemGivesNoCharacters) {
    EXPECT_EQ(display(10, modifier::command), "⌘?");
    EXPECT_EQ(display(10, 0), "?");
}

TEST(HotkeyDisplay, ShowsTheModifiersAloneWhereTheCharactersAreEmpty) {
    EXPECT_EQ(display(10, modifier::command | modifier::shift, ""), "⇧⌘");
}

}  // namespace
}  // namespace velmo
