#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace velmo {

/// What a panel of the walk may have, by what it says.
inline constexpr std::array<std::string_view, 3> panelEntries{"H", "A", "Velmo Settings"};
inline constexpr std::size_t settingsEntry = 2;

/// What takes time: the query of the windows, and the picture of each of the two items.
inline constexpr std::size_t captureTimeCount = 3;

}  // namespace velmo
