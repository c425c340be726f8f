#pragma once

#include "lifetime.h"
#include "linux/x11/menu_bar.h"

#include <functional>
#include <memory>

namespace velmo::x11 {

/// Shows an item's tooltip once the pointer has rested on the item.
class HoverToolTip {
public:
    /// `show` has the tooltip shown below the place, in pixels of the root window, where there is one.
    HoverToolTip(MenuBar& bar, const BarItem& item, std::function<void(int x, int y)> show);
    ~HoverToolTip();
    HoverToolTip(const HoverToolTip&) = delete;
    HoverToolTip& operator=(const HoverToolTip&) = delete;

    void pointerEntered();
    /// The pointer has left, or something else is shown now.
    void end();

private:
    void show() const;

    MenuBar& bar_;
    const BarItem& item_;
    std::function<void(int x, int y)> show_;
    std::shared_ptr<Timer> delay_;
    Lifetime lifetime_;
};

}  // namespace velmo::x11
