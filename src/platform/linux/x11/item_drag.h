#pragma once

#include "linux/event_loop/paced_work.h"
#include "linux/x11/keyboard.h"
#include "linux/x11/menu_bar.h"

#include <optional>

namespace velmo::x11 {

/// Moves items with the Super key held: a press takes the item under the pointer, the neighbours make
/// room while it moves, the release lets it go, and Escape puts it back.
class ItemDrag {
public:
    ItemDrag(MenuBar& bar, Modifiers& modifiers, const Keyboard& keyboard);
    ~ItemDrag();
    ItemDrag(const ItemDrag&) = delete;
    ItemDrag& operator=(const ItemDrag&) = delete;

private:
    void grab() const;
    void handle(const xcb_generic_event_t& event);
    void pressed(const xcb_button_press_event_t& event);
    void begin(const xcb_button_press_event_t& event);
    void released();
    void move(const xcb_motion_notify_event_t& event);
    void keyPressed(xcb_keycode_t key);
    void keyReleased(xcb_keycode_t key);
    void useSuper();
    void takeKeyboard();
    void askAgain();
    void giveKeyboardBack();

    MenuBar& bar_;
    Connection& connection_;
    Modifiers& modifiers_;
    const Keyboard& keyboard_;
    /// Of the press, in pixels of the bar and of the item.
    int startX_ = 0;
    int offsetInItem_ = 0;
    bool moving_ = false;
    bool hasKeyboard_ = false;
    int questionsLeft_ = 0;
    PacedWork asking_;
    /// Has put the item back and is still down.
    std::optional<xcb_keycode_t> heldEscape_;
    Registration ends_;
    Registration modifierChanges_;
    Registration events_;
};

}  // namespace velmo::x11
