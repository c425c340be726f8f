#pragma once

#include "linux/event_loop/posted_once.h"
#include "linux/listeners.h"
#include "linux/x11/connection.h"

#include <functional>
#include <optional>
#include <unordered_map>
#include <utility>

namespace velmo::x11 {

/// The keyboard's keys: which X key code each virtual key code has. Follows changes of the keyboard.
class Keyboard {
public:
    explicit Keyboard(Connection& connection);

    /// Absent where the keyboard has no such key.
    std::optional<xcb_keycode_t> keycodeOf(std::uint32_t virtualKeyCode) const;

    /// The other way round. Absent for keys that have none, the modifiers among them.
    std::optional<std::uint16_t> virtualKeyOf(xcb_keycode_t key) const;

    /// Called after the keys have changed.
    Registration onChange(std::function<void()> listener) { return listeners_.add(std::move(listener)); }

private:
    void read();

    Connection& connection_;
    std::unordered_map<std::uint32_t, xcb_keycode_t> keycodes_;
    Listeners listeners_;
    PostedOnce reading_;
    Registration changes_;
};

}  // namespace velmo::x11
