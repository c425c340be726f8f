#pragma once

#include <array>
#include <string_view>

namespace velmo {

/// The program's own items, from right to left.
enum class OwnItem { toggle, hiddenDivider, alwaysHiddenDivider, clock };

inline constexpr std::array<std::string_view, 4> ownItemNames{"Velmo.Toggle", "Velmo.Divider",
                                                              "Velmo.AlwaysHiddenDivider", "Velmo.Clock"};

inline constexpr std::string_view nameOf(OwnItem item) {
    return ownItemNames[static_cast<std::size_t>(item)];
}

}  // namespace velmo
