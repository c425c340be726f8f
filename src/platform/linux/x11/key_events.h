#pragma once

#include "event.h"
#include "linux/x11/keyboard.h"
#include "linux/x11/modifiers.h"

#include <cstdint>
#include <optional>
#include <string>

namespace velmo::x11 {

/// What the display tells of a key, as the program's own event.
class KeyEvents {
public:
    KeyEvents(Connection& connection, const Keyboard& keyboard, const Modifiers& modifiers)
        : connection_(connection), keyboard_(keyboard), modifiers_(modifiers) {}

    /// A `keyDown` from an X key code and the state of the modifiers and the layout. Absent for keys without
    /// a virtual key code.
    std::optional<Event> keyDown(std::uint32_t keycode, std::uint32_t state) const;

private:
    std::optional<std::string> characters(xcb_keycode_t key, std::uint32_t state) const;

    Connection& connection_;
    const Keyboard& keyboard_;
    const Modifiers& modifiers_;
};

}  // namespace velmo::x11
