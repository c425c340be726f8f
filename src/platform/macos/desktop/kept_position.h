#pragma once

#include <string>

namespace velmo::macos {

// The system forgets where an item stood that is hidden or removed, at once or some time later, although the
// same item may come back. Both do nothing for an item without a name.

/// To be called before an item goes.
void keepPosition(const std::string& autosaveName);
/// To be called before it is shown again. What the system knows itself stays.
void restorePosition(const std::string& autosaveName);

}  // namespace velmo::macos
