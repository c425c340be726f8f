#include "main_menu.h"

#include "macos/appkit/ns_control.h"

#include <initializer_list>

namespace velmo::macos {
namespace {

struct Command {
    const char* title;
    Selector action;
    /// With ⌘, and with ⇧ where it is a capital letter. None: a separator.
    const char* key;
    /// Not retained. None: whoever has the keyboard performs it.
    Object target = {};
};

void addMenu(const NSMenu& bar, const char* title, std::initializer_list<Command> commands) {
    const NSMenu menu = NSMenu::create();
    menu.setTitle(NSString::from(title));
    for (const Command& command : commands) {
        if (command.title == nullptr) {
            menu.addItem(NSMenuItem::separator());
            continue;
        }
        const NSMenuItem item =
            NSMenuItem::with(NSString::from(command.title), command.action, NSString::from(command.key));
        item.setTarget(command.target);
        menu.addItem(item);
    }
    const NSMenuItem item = NSMenuItem::with(NSString::from(title), nullptr, NSString::from(""));
    bar.addItem(item);
    bar.setSubmenu(menu, item);
}

}  // namespace

NSMenu makeMainMenu(const UndoTarget& undo) {
    const Command separator{nullptr, nullptr, nullptr};
    NSMenu bar = NSMenu::create();
    addMenu(bar, "Velmo", {{"Quit Velmo", actionNamed<"NSApplication", "terminate:">(), "q"}});
    addMenu(bar, "Edit",
            {{"Undo", UndoTarget::undoAction(), "z", undo.object()},
             {"Redo", UndoTarget::redoAction(), "Z", undo.object()},
             separator,
             {"Cut", actionNamed<"NSText", "cut:">(), "x"},
             {"Copy", actionNamed<"NSText", "copy:">(), "c"},
             {"Paste", actionNamed<"NSText", "paste:">(), "v"},
             {"Select All", actionNamed<"NSText", "selectAll:">(), "a"}});
    addMenu(bar, "Window",
            {{"Close", actionNamed<"NSWindow", "performClose:">(), "w"},
             {"Minimize", actionNamed<"NSWindow", "performMiniaturize:">(), "m"}});
    return bar;
}

}  // namespace velmo::macos
