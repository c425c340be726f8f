#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace velmo::x11 {

/// The virtual key code of the key that the X keyboard extension has this name for. Both name a key by its
/// place on an ANSI or ISO keyboard, whatever is printed on it. Absent for keys that have no such code.
std::optional<std::uint16_t> virtualKeyCodeOf(std::string_view keyName);

}  // namespace velmo::x11
