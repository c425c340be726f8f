#pragma once

#include "undo_target.h"

namespace velmo::macos {

/// What gives windows ⌘W and text fields ⌘Z, ⌘C and ⌘V. Accessories have it though nobody sees it. The target
/// is not retained.
NSMenu makeMainMenu(const UndoTarget& undo);

}  // namespace velmo::macos
