#include "clock/calendar_nav_button_style.h"

namespace velmo {

View CalendarNavButtonStyle::makeBody(View label, bool isPressed) const {
    constexpr double cornerRadius = 6;
    constexpr double pressedOpacity = 0.15;
    constexpr double releasedOpacity = 0.06;
    constexpr double disabledOpacity = 0.5;
    return std::move(label)
        .with(Foreground{isEnabled ? SemanticColor{ColorRole::primary}
                                   : SemanticColor{ColorRole::secondary, disabledOpacity}})
        .with(Background{ShapeKind::roundedRectangle,
                         cornerRadius,
                         {ColorRole::primary, isPressed ? pressedOpacity : releasedOpacity}});
}

}  // namespace velmo
