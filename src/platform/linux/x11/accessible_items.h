#pragma once

#include "lifetime.h"
#include "linux/event_loop/paced_work.h"
#include "linux/listeners.h"
#include "linux/toolkit/accessible_bar.h"
#include "linux/x11/menu_bar.h"
#include "linux/x11/synthetic_events.h"

#include <deque>
#include <functional>
#include <utility>
#include <vector>

namespace velmo::x11 {

/// The bar as assistive programs have it, for as long as this lives.
class AccessibleItems : public AccessibleBar {
public:
    AccessibleItems(MenuBar& bar, SyntheticEvents& events);
    ~AccessibleItems() override;
    AccessibleItems(const AccessibleItems&) = delete;
    AccessibleItems& operator=(const AccessibleItems&) = delete;

    Rect place() const override;
    std::vector<AccessibleBarItem> items() const override;
    void press(WindowNumber item) override { click(item, XCB_BUTTON_INDEX_1); }
    void showMenu(WindowNumber item) override { click(item, XCB_BUTTON_INDEX_3); }
    Registration onChange(std::function<void()> listener) override {
        return listeners_.add(std::move(listener));
    }

private:
    struct Click {
        WindowNumber item = 0;
        xcb_button_t button = 0;
    };

    void click(WindowNumber item, xcb_button_t button);
    void handle(const xcb_generic_event_t& event);
    void clickNow(const Click& click, xcb_timestamp_t time);
    bool isSeen(const BarItem& item) const;

    MenuBar& bar_;
    SyntheticEvents& events_;
    Listeners listeners_;
    /// Its property is changed so that the server says what time it is.
    xcb_window_t window_;
    std::deque<Click> clicks_;
    Registration times_;
    PacedWork telling_;
    Registration layouts_;
    Lifetime lifetime_;
};

}  // namespace velmo::x11
