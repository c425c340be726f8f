#pragma once

#include "platform/user_defaults.h"

#include <cstdint>
#include <optional>
#include <string>

namespace velmo {

/// A recorded keyboard shortcut.
struct HotkeyBinding {
    /// Virtual key code.
    std::uint16_t keyCode = 0;
    /// Bits as in the modifier flags of events.
    std::uint64_t modifiers = 0;
    /// What the user reads, UTF-8.
    std::string display;

    bool operator==(const HotkeyBinding&) const = default;
};

/// The stored form: a JSON object with the fields in their order. Absent where `display` is not UTF-8.
std::optional<Data> encodeHotkeyBinding(const HotkeyBinding& binding);
/// Absent where the data is not JSON or lacks a field of the right type and range. Other members are ignored.
std::optional<HotkeyBinding> decodeHotkeyBinding(const Data& json);

}  // namespace velmo
