#pragma once

#include "platform/image.h"
#include "preferences/toggle_icon_style.h"

namespace velmo {

/// What the toggle shows; `revealed` is true while hidden items are shown.
Image toggleImage(bool revealed, ToggleIconStyle style);

}  // namespace velmo
