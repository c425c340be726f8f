#pragma once

#include "linux/x11/connection.h"
#include "linux/x11/modifiers.h"

#include <array>
#include <cstdint>
#include <map>
#include <vector>

namespace velmo::x11 {

/// Lets go of the modifier keys that the user holds, for the time of a click that is not theirs, and takes
/// those again that are still held then. Locks stay as they are. Needs the extension XTEST.
class HeldModifiers {
public:
    HeldModifiers(Connection& connection, const Modifiers& modifiers)
        : connection_(connection), modifiers_(modifiers) {}

    void release();
    void restore();

private:
    /// Which keys of a keyboard are down, a bit each.
    using KeysDown = std::array<std::uint8_t, 32>;
    struct Keyboard {
        KeysDown keys{};
        /// Made by the server for events like ours: it forgets what it held as we release it.
        bool isSynthetic = false;
    };
    using Keyboards = std::map<std::uint16_t, Keyboard>;

    std::vector<xcb_keycode_t> keysDown() const;
    Keyboards keyboards() const;
    bool isStillHeld(xcb_keycode_t key, const Keyboards& now) const;

    Connection& connection_;
    const Modifiers& modifiers_;
    std::vector<xcb_keycode_t> released_;
    Keyboards before_;
};

}  // namespace velmo::x11
