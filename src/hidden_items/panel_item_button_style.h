#pragma once

#include "platform/view.h"

namespace velmo {

/// The look of every button in the hidden items panel.
struct PanelItemButtonStyle {
    View makeBody(const View& label, bool isPressed) const;
};

}  // namespace velmo
