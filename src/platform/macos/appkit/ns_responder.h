#pragma once

#include "macos/foundation/ns_undo_manager.h"

namespace velmo::macos {

class NSResponder : public ClassOf<NSResponder, "NSResponder", NSObject> {
public:
    /// None where nothing can be undone.
    NSUndoManager undoManager() const { return send<NSUndoManager, "undoManager">(); }
};

}  // namespace velmo::macos
