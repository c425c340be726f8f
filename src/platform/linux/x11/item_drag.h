#pragma once

#include "linux/x11/menu_bar.h"

namespace velmo::x11 {

/// Moves items with the Super key held: a press takes the item under the pointer, the neighbours make
/// room while it moves, the release lets it go.
class ItemDrag {
public:
    ItemDrag(MenuBar& bar, Modifiers& modifiers);

private:
    void grab() const;
    void handle(const xcb_generic_event_t& event);
    void begin(const xcb_button_press_event_t& event);
    void move(const xcb_motion_notify_event_t& event);

    MenuBar& bar_;
    Connection& connection_;
    Modifiers& modifiers_;
    /// Of the press, in pixels of the bar and of the item.
    int startX_ = 0;
    int offsetInItem_ = 0;
    bool moving_ = false;
    Registration modifierChanges_;
    Registration events_;
};

}  // namespace velmo::x11
