#pragma once

#include "lifetime.h"
#include "linux/x11/menu_bar.h"
#include "scoped_timer.h"

#include <functional>
#include <string>

namespace velmo::x11 {

/// Shows an item's tooltip once the pointer has rested on the item.
class HoverToolTip {
public:
    /// Below a place, in pixels of the root window.
    using ShowFunction = void (LazyToolkit::*)(const std::string& text, int x, int y);

    /// `text` is asked each time; there is no tooltip while it is empty.
    HoverToolTip(MenuBar& bar, const BarItem& item, std::function<std::string()> text,
                 ShowFunction showFunction);
    ~HoverToolTip();
    HoverToolTip(const HoverToolTip&) = delete;
    HoverToolTip& operator=(const HoverToolTip&) = delete;

    void pointerEntered();
    /// The text may be another one.
    void update();
    /// The pointer has left, or something else is shown now.
    void end();

private:
    void show();

    MenuBar& bar_;
    const BarItem& item_;
    std::function<std::string()> text_;
    ShowFunction showFunction_;
    /// What is shown at present, or empty.
    std::string shown_;
    ScopedTimer delay_;
    Lifetime lifetime_;
};

}  // namespace velmo::x11
