#pragma once

#include "platform/platform.h"

namespace velmo {

/// Whether a menu of another application is open. Asks the window server for all windows: not for frequent
/// use.
bool isOtherAppMenuOpen(const Platform& platform);

}  // namespace velmo
