#pragma once

#include "platform/view.h"

namespace velmo {

/// The look of the calendar's buttons.
struct CalendarNavButtonStyle {
    bool isEnabled = true;

    View makeBody(View label, bool isPressed) const;
};

}  // namespace velmo
