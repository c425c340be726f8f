#include "menubar/toggle_image.h"

namespace velmo {

namespace {

constexpr double symbolPointSize = 12;

Image symbolImage(const char* name) {
    return {Symbol{name, symbolPointSize, FontWeight::semibold}, false, "Velmo"};
}

/// A refrigerator seen from the front: a solid upper door, the outline of a lower one, and a handle in it.
Image fridgeImage(bool withDots) {
    constexpr double dotDiameter = 1.6;
    constexpr double dotY = 3.6;
    // Even-odd: what lies inside the body is left clear.
    Fill doors{{RoundedRect{{4.0, 1.5, 10.0, 15.0}, 2.4, 2.4}, RoundedRect{{5.6, 7.3, 6.8, 7.6}, 1.2, 1.2}},
               WindingRule::evenOdd};
    if (withDots) {
        for (const double x : {7.5, 9.3, 11.1})
            doors.path.emplace_back(Oval{{x, dotY, dotDiameter, dotDiameter}});
    }
    Fill handle{{RoundedRect{{10.9, 8.6, 1.0, 3.2}, 0.5, 0.5}}, WindingRule::nonZero};
    return {Drawing{{18, 18}, true, {std::move(doors), std::move(handle)}}, true, "velmo"};
}

}  // namespace

Image toggleImage(bool revealed, ToggleIconStyle style) {
    switch (style) {
        case ToggleIconStyle::chevron:
            return symbolImage(revealed ? "chevron.right" : "chevron.left");
        case ToggleIconStyle::ellipsis:
            return symbolImage(revealed ? "ellipsis.circle.fill" : "ellipsis.circle");
        case ToggleIconStyle::dot:
            return symbolImage(revealed ? "circle.fill" : "circle");
        case ToggleIconStyle::lines:
            return symbolImage(revealed ? "line.3.horizontal.decrease" : "line.3.horizontal");
        case ToggleIconStyle::eye:
            return symbolImage(revealed ? "eye" : "eye.slash");
        case ToggleIconStyle::fridge:
            break;
    }
    return fridgeImage(!revealed);
}

}  // namespace velmo
