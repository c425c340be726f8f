#pragma once

#include <array>
#include <string_view>

namespace velmo {

/// The program's own items, from right to left.
enum class OwnItem { toggle, hiddenDivider, alwaysHiddenDivider };

inline constexpr std::array<std::string_view, 3> ownItemNames{"Velmo.Toggle", "Velmo.Divider",
                                                              "Velmo.AlwaysHiddenDivider"};

inline constexpr std::string_view nameOf(OwnItem item) {
    return ownItemNames[static_cast<std::size_t>(item)];
}

}  // namespace velmo
