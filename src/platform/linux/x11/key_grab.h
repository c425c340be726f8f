#pragma once

#include "linux/x11/connection.h"

#include <cstdint>
#include <vector>

namespace velmo::x11 {

/// A key with modifiers of the core protocol.
struct KeyCombination {
    xcb_keycode_t key = 0;
    std::uint16_t modifiers = 0;

    bool operator==(const KeyCombination&) const = default;
};

/// What was pressed, whatever the locks.
KeyCombination pressedCombination(const xcb_key_press_event_t& press, std::uint16_t lockMask);

/// Has the key's presses reported to the root window's handlers and to nobody else, once with each of these
/// states of the locks. False where another program has one of them; then none is taken.
bool grabKey(const Connection& connection, const KeyCombination& combination,
             const std::vector<std::uint16_t>& locks);
void ungrabKey(const Connection& connection, const KeyCombination& combination,
               const std::vector<std::uint16_t>& locks);

}  // namespace velmo::x11
