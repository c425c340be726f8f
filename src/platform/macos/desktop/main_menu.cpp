#include "main_menu.h"

#include "macos/appkit/ns_application.h"
#include "macos/appkit/ns_control.h"

#include <initializer_list>

namespace velmo::macos {
namespace {

struct Command {
    const char* title;
    Selector action;
    /// With ⌘, and with ⇧ where it is a capital letter. None: a separator.
    const char* key;
};

constexpr Command separator{nullptr, nullptr, nullptr};

/// Without targets: whoever has the keyboard performs them.
void addMenu(const NSMenu& bar, const char* title, std::initializer_list<Command> commands) {
    const NSMenu menu = NSMenu::create();
    menu.setTitle(NSString::from(title));
    for (const Command& command : commands) {
        menu.addItem(command.title == nullptr
                         ? NSMenuItem::separator()
                         : NSMenuItem::with(NSString::from(command.title), command.action,
                                            NSString::from(command.key)));
    }
    const NSMenuItem item = NSMenuItem::with(NSString::from(title), nullptr, NSString::from(""));
    bar.addItem(item);
    bar.setSubmenu(menu, item);
}

}  // namespace

NSMenu makeMainMenu() {
    NSMenu bar = NSMenu::create();
    addMenu(bar, "Velmo", {{"Quit Velmo", actionNamed<"NSApplication", "terminate:">(), "q"}});
    // What can be undone is known to the window, whose headers do not say so.
    addMenu(bar, "Edit",
            {{"Undo", selectorNamed<"undo:">(), "z"},
             {"Redo", selectorNamed<"redo:">(), "Z"},
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
