#pragma once

#include "platform/event.h"
#include "preferences/hotkey_binding.h"

#include <array>
#include <optional>

namespace velmo {

/// A shortcut that the walk may set, and what the system is to be asked for.
struct Shortcut {
    std::uint16_t keyCode = 0;
    ModifierFlags flags = 0;
    const char* display = "";
    std::uint32_t hotKeyModifiers = 0;
};

inline constexpr std::array<Shortcut, 7> shortcuts{{
    {4, modifier::command | modifier::option, "⌥⌘H", 0x900},
    {4, modifier::command | modifier::option, "the same by another name", 0x900},
    {4, modifier::control | modifier::shift, "⌃⇧H", 0x1200},
    {35, modifier::capsLock, "P", 0},
    {35, ~ModifierFlags{0}, "⌃⌥⇧⌘P", 0x1B00},
    {0xFFFF, modifier::function | modifier::numericPad | modifier::shift, "⇧?", 0x200},
    {49, (modifier::command << 32U) | modifier::command, "⌘Space", 0x100},
}};

/// `choice` is a place among the shortcuts, or their number for none.
inline std::optional<HotkeyBinding> bindingOf(std::size_t choice) {
    if (choice == shortcuts.size())
        return std::nullopt;
    const Shortcut& shortcut = shortcuts[choice];
    return HotkeyBinding{shortcut.keyCode, shortcut.flags, shortcut.display};
}

/// What a step that reports a press says: 0 stands for no event, 1 for one that cannot be read.
inline constexpr std::size_t firstReportedId = 2;

inline std::optional<std::uint32_t> reportedId(std::size_t choice) {
    return choice < firstReportedId ? std::nullopt
                                    : std::optional(static_cast<std::uint32_t>(choice - firstReportedId));
}

}  // namespace velmo
