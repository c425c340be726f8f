#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace velmo::x11 {

/// The name that the X keyboard extension has for the key with this virtual key code. Both name a key by its
/// place on an ANSI or ISO keyboard, whatever is printed on it. Absent for codes that name no key.
std::optional<std::string_view> keyNameOf(std::uint32_t virtualKeyCode);

/// The other way round.
std::optional<std::uint16_t> virtualKeyCodeOf(std::string_view keyName);

}  // namespace velmo::x11
