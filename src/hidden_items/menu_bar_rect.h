#pragma once

#include "platform/geometry.h"
#include "platform/platform.h"
#include "platform/screens.h"

namespace velmo {

/// The strip at the top of the screen that its menu bar takes, or would take where it is hidden: points,
/// origin at the top left of the primary screen.
Rect menuBarRect(const Screen& screen, const Platform& platform);

}  // namespace velmo
