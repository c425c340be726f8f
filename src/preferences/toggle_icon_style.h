#pragma once

#include <array>
#include <functional>
#include <string_view>

namespace velmo {

/// Which pair of images the toggle shows.
enum class ToggleIconStyle { chevron, ellipsis, dot, lines, eye, fridge };

/// In the order in which the user chooses among them.
inline constexpr std::array<ToggleIconStyle, 6> allToggleIconStyles{
    ToggleIconStyle::chevron, ToggleIconStyle::ellipsis, ToggleIconStyle::dot,
    ToggleIconStyle::lines,   ToggleIconStyle::eye,      ToggleIconStyle::fridge};

/// The name under which the case is stored.
std::string_view rawValue(ToggleIconStyle style);
std::string_view displayName(ToggleIconStyle style);
/// chevron for every text that is not exactly a raw value.
ToggleIconStyle toggleIconStyleFromRawValue(std::string_view text);

}  // namespace velmo

template <>
struct std::hash<velmo::ToggleIconStyle> {
    std::size_t operator()(velmo::ToggleIconStyle style) const noexcept {
        return std::hash<std::string_view>()(velmo::rawValue(style));
    }
};
