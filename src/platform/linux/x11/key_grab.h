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

/// Has the presses of each of these reported to the root window's handlers and to nobody else, with each of
/// these states of the locks. Returns those that are ours then: where another program has a combination with
/// some state of the locks, it is left to it with all of them.
std::vector<KeyCombination> grabKeys(const Connection& connection,
                                     const std::vector<KeyCombination>& combinations,
                                     const std::vector<std::uint16_t>& locks);
void ungrabKey(const Connection& connection, const KeyCombination& combination,
               const std::vector<std::uint16_t>& locks);

}  // namespace velmo::x11
