#pragma once

#include "linux/x11/menu_bar.h"
#include "window_server.h"

namespace velmo::x11 {

/// The windows that matter to a menu bar: the items in it, and the menus that programs have open.
class WindowList : public WindowServer {
public:
    explicit WindowList(MenuBar& bar) : bar_(bar) {}

    std::optional<std::vector<WindowListEntry>> windowList(WindowListOption option) const override;

private:
    void appendItems(std::vector<WindowListEntry>& entries) const;

    MenuBar& bar_;
};

}  // namespace velmo::x11
