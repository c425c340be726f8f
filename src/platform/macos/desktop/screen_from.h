#pragma once

#include "macos/appkit/ns_screen.h"
#include "screens.h"

#include <optional>

namespace velmo::macos {

/// Absent for none.
std::optional<Screen> screenFrom(const NSScreen& screen);

}  // namespace velmo::macos
