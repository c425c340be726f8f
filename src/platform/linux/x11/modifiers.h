#pragma once

#include "event.h"
#include "linux/event_loop/posted_once.h"
#include "linux/listeners.h"
#include "linux/x11/connection.h"

#include <cstdint>
#include <functional>
#include <utility>
#include <vector>

namespace velmo::x11 {

/// The bits of all modifiers, in an X modifier state that may have bits of buttons as well.
inline constexpr std::uint16_t everyModifier = XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_LOCK | XCB_MOD_MASK_CONTROL |
                                               XCB_MOD_MASK_1 | XCB_MOD_MASK_2 | XCB_MOD_MASK_3 |
                                               XCB_MOD_MASK_4 | XCB_MOD_MASK_5;

/// Which bits of an X modifier state stand for which keys; follows changes of the mapping.
class Modifiers {
public:
    explicit Modifiers(Connection& connection);

    /// Modifier flags for the state of an X event.
    ModifierFlags flags(std::uint16_t state) const;
    /// The bit of the Super key, which plays Command's part.
    std::uint16_t superMask() const { return masks_.super; }
    /// The bit of the Alt key, which plays Option's part.
    std::uint16_t altMask() const { return masks_.alt; }
    /// The bits of all locks.
    std::uint16_t lockMask() const;
    /// Every combination of locks that may be on while a key or button is pressed, each once.
    std::vector<std::uint16_t> lockCombinations() const;
    /// Every combination of all the other modifiers, each once.
    std::vector<std::uint16_t> combinations() const;

    /// Called after the mapping has changed.
    Registration onChange(std::function<void()> listener) { return listeners_.add(std::move(listener)); }

private:
    struct Masks {
        std::uint16_t alt = 0;
        std::uint16_t super = 0;
        /// 0 where the keyboard lacks the lock.
        std::uint16_t numLock = 0;
        std::uint16_t scrollLock = 0;

        bool operator==(const Masks&) const = default;
    };

    void read();

    Connection& connection_;
    Masks masks_;
    Listeners listeners_;
    PostedOnce reading_;
    Registration changes_;
};

}  // namespace velmo::x11
