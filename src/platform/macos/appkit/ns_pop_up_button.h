#pragma once

#include "ns_button.h"
#include "ns_menu.h"

namespace velmo::macos {

class NSPopUpButton : public ClassOf<NSPopUpButton, "NSPopUpButton", NSButton> {
public:
    /// Shows the chosen item.
    static NSPopUpButton create() { return make<"initWithFrame:pullsDown:">(CGRect{}, false); }

    void removeAllItems() const { send<void, "removeAllItems">(); }
    NSMenu menu() const { return send<NSMenu, "menu">(); }
    /// -1 for none.
    NSInteger indexOfSelectedItem() const { return send<NSInteger, "indexOfSelectedItem">(); }
    void selectItemAtIndex(NSInteger index) const { send<void, "selectItemAtIndex:">(index); }
};

}  // namespace velmo::macos
