#include "hotkeys/hotkey_display.h"

#include "hotkeys/upper_case.h"

#include <array>
#include <map>
#include <utility>

namespace velmo {

namespace {

/// In the order in which they are read.
constexpr auto modifierSymbols = std::to_array<std::pair<ModifierFlags, const char*>>({
    {modifier::control, "⌃"},
    {modifier::option, "⌥"},
    {modifier::shift, "⇧"},
    {modifier::command, "⌘"},
});

/// By virtual key code: keys that type nothing, or nothing that can be seen.
const std::map<std::uint16_t, const char*>& keyNames() {
    static const std::map<std::uint16_t, const char*> names{
        {36, "↩"},  {48, "⇥"},   {49, "Space"}, {51, "⌫"},    {53, "⎋"},    {76, "⌤"},    {117, "⌦"},
        {115, "↖"}, {119, "↘"},  {116, "⇞"},    {121, "⇟"},   {123, "←"},   {124, "→"},   {125, "↓"},
        {126, "↑"}, {122, "F1"}, {120, "F2"},   {99, "F3"},   {118, "F4"},  {96, "F5"},   {97, "F6"},
        {98, "F7"}, {100, "F8"}, {101, "F9"},   {109, "F10"}, {103, "F11"}, {111, "F12"},
    };
    return names;
}

}  // namespace

std::string hotkeyDisplay(const Event& event) {
    std::string display;
    for (const auto& [flag, symbol] : modifierSymbols) {
        if ((event.modifierFlags & flag) != 0)
            display += symbol;
    }
    const auto name = keyNames().find(event.keyCode);
    if (name != keyNames().end())
        return display + name->second;
    return display +
           (event.charactersIgnoringModifiers ? upperCased(*event.charactersIgnoringModifiers) : "?");
}

}  // namespace velmo
