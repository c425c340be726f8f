#pragma once

#include "async/task.h"
#include "platform/geometry.h"
#include "platform/platform.h"

#include <optional>

namespace velmo {

/// Clicks with the left button as the user would: moves the pointer there, presses and releases. Then
/// moves it to `returnPoint`, if there is one. Points have their origin at the top left of the primary
/// screen. Cancellation makes it faster, but leaves nothing out.
Task<> postClick(Point point, std::optional<Point> returnPoint, Platform platform);

}  // namespace velmo
