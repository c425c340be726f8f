#pragma once

#include "macos/appkit/ns_menu.h"

namespace velmo::macos {

/// What gives windows ⌘W and text fields ⌘C and ⌘V. Accessories have it though nobody sees it.
NSMenu makeMainMenu();

}  // namespace velmo::macos
