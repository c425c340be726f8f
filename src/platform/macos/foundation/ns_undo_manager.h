#pragma once

#include "ns_object.h"

namespace velmo::macos {

class NSUndoManager : public ClassOf<NSUndoManager, "NSUndoManager", NSObject> {
public:
    bool canUndo() const { return send<bool, "canUndo">(); }
    bool canRedo() const { return send<bool, "canRedo">(); }
    void undo() const { send<void, "undo">(); }
    void redo() const { send<void, "redo">(); }
};

}  // namespace velmo::macos
