#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace velmo {

/// Kinds of input events. The numbers are the same on every system.
enum class EventType : std::uint32_t {
    leftMouseDown = 1,
    leftMouseUp = 2,
    rightMouseDown = 3,
    rightMouseUp = 4,
    mouseMoved = 5,
    mouseEntered = 8,
    mouseExited = 9,
    keyDown = 10,
    scrollWheel = 22,
    otherMouseDown = 25,
    otherMouseUp = 26,
};

/// Names one of the program's own windows. 0 stands for none.
using WindowNumber = std::int64_t;

/// A set of event types: bit n stands for the type with number n.
using EventMask = std::uint64_t;

constexpr EventMask maskOf(EventType type) {
    return EventMask{1} << static_cast<std::uint32_t>(type);
}

/// Modifier keys and locks held during an event, as bits. The same on every system.
using ModifierFlags = std::uint64_t;

namespace modifier {
inline constexpr ModifierFlags capsLock = 0x10000;
inline constexpr ModifierFlags shift = 0x20000;
inline constexpr ModifierFlags control = 0x40000;
inline constexpr ModifierFlags option = 0x80000;
inline constexpr ModifierFlags command = 0x100000;
inline constexpr ModifierFlags numericPad = 0x200000;
inline constexpr ModifierFlags function = 0x800000;
}  // namespace modifier

/// The virtual key code of the Escape key.
inline constexpr std::uint16_t escapeKeyCode = 53;

/// One input event.
struct Event {
    EventType type = EventType::leftMouseUp;
    ModifierFlags modifierFlags = 0;
    /// Points; only scroll-wheel events have them.
    double scrollingDeltaX = 0;
    double scrollingDeltaY = 0;
    /// The own window that the event goes to.
    WindowNumber windowNumber = 0;
    /// Keyboard events only: the virtual key code, which names a key by its place on the keyboard.
    std::uint16_t keyCode = 0;
    /// Keyboard events only: what the key types with no modifier but Shift held. Absent where the system
    /// gives none.
    std::optional<std::string> charactersIgnoringModifiers = {};
    /// Mouse buttons on status items only, 0 elsewhere: a release has the number of its press, no other press
    /// has it.
    std::int64_t eventNumber = 0;

    bool operator==(const Event&) const = default;
};

}  // namespace velmo
