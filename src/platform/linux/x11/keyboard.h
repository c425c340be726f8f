#pragma once

#include "linux/event_loop/posted_once.h"
#include "linux/listeners.h"
#include "linux/x11/connection.h"

#include <functional>
#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

namespace velmo::x11 {

/// The keyboard's keys: which X key code each virtual key code has. Keys are told by their places, but Escape
/// by what it types. Follows changes of the keyboard.
class Keyboard {
public:
    explicit Keyboard(Connection& connection);

    /// Absent where the keyboard has no such key.
    std::optional<xcb_keycode_t> keycodeOf(std::uint32_t virtualKeyCode) const;

    /// The keys that type Escape, wherever in the keyboard the user has them; where none does, the one in the
    /// usual place.
    const std::vector<xcb_keycode_t>& escapeKeys() const { return escapeKeys_; }
    bool isEscape(xcb_keycode_t key) const;

    /// One to which no layout gives a meaning. Absent where all have one.
    std::optional<xcb_keycode_t> meaninglessKey() const { return meaninglessKey_; }

    /// The other way round. Absent for keys that have none, the modifiers among them.
    std::optional<std::uint16_t> virtualKeyOf(xcb_keycode_t key) const;

    /// Called after the keys have changed.
    Registration onChange(std::function<void()> listener) { return listeners_.add(std::move(listener)); }

private:
    void read();

    Connection& connection_;
    std::unordered_map<std::uint32_t, xcb_keycode_t> keycodes_;
    std::vector<xcb_keycode_t> escapeKeys_;
    std::optional<xcb_keycode_t> meaninglessKey_;
    Listeners listeners_;
    PostedOnce reading_;
    Registration changes_;
};

}  // namespace velmo::x11
