#include "preferences/toggle_icon_style.h"

namespace velmo {

std::string_view rawValue(ToggleIconStyle style) {
    switch (style) {
        case ToggleIconStyle::chevron:
            return "chevron";
        case ToggleIconStyle::ellipsis:
            return "ellipsis";
        case ToggleIconStyle::dot:
            return "dot";
        case ToggleIconStyle::lines:
            return "lines";
        case ToggleIconStyle::eye:
            return "eye";
        case ToggleIconStyle::fridge:
            return "fridge";
    }
    return {};
}

// Two spaces stand before each symbol character.
std::string_view displayName(ToggleIconStyle style) {
    switch (style) {
        case ToggleIconStyle::chevron:
            return "Chevron  ‹ ›";
        case ToggleIconStyle::ellipsis:
            return "Ellipsis  …";
        case ToggleIconStyle::dot:
            return "Dot  ●";
        case ToggleIconStyle::lines:
            return "Lines  ≡";
        case ToggleIconStyle::eye:
            return "Eye";
        case ToggleIconStyle::fridge:
            return "Fridge (velmo)";
    }
    return {};
}

ToggleIconStyle toggleIconStyleFromRawValue(std::string_view text) {
    for (const ToggleIconStyle style : allToggleIconStyles) {
        if (rawValue(style) == text)
            return style;
    }
    return ToggleIconStyle::chevron;
}

}  // namespace velmo
