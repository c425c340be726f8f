#pragma once

#include "macos/appkit/ns_application.h"
#include "macos/objc/instance.h"

namespace velmo::macos {

/// Undoes, and does again, what was typed where the keyboard is. Windows do so, too, but no header says it.
class UndoTarget {
public:
    static Selector undoAction() { return selectorNamed<"undo:">(); }
    static Selector redoAction() { return selectorNamed<"redo:">(); }

    const NSObject& object() const { return instance_.object(); }

private:
    static NSUndoManager manager() {
        return NSApplication::shared().keyWindow().firstResponder().undoManager();
    }

    void undo(const NSObject& /*sender*/) { manager().undo(); }
    void redo(const NSObject& /*sender*/) { manager().redo(); }
    /// Otherwise a key that does nothing would make no sound.
    bool canPerform(const NSMenuItem& item) {
        return item.action() == undoAction() ? manager().canUndo() : manager().canRedo();
    }

    using Class = Subclass<UndoTarget, "VelmoUndoTarget", NSObject, Method<"undo:", &UndoTarget::undo>,
                           Method<"redo:", &UndoTarget::redo>,
                           Method<"validateMenuItem:", &UndoTarget::canPerform, "NSMenuItemValidation">>;

    Instance<UndoTarget, Class, NSObject> instance_{*this};
};

}  // namespace velmo::macos
