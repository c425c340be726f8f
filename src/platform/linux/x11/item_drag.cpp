#include "item_drag.h"

#include "linux/x11/fake_input.h"
#include "linux/x11/reply.h"

#include <cstdlib>
#include <utility>

namespace velmo::x11 {

namespace {

/// A hand is not perfectly still while it clicks. Points.
constexpr double dragThreshold = 3;

/// So often a drag at rest asks for the keyboard that somebody else keeps.
constexpr int mostQuestions = 100;
constexpr Seconds questionPause = 0.05;

}  // namespace

ItemDrag::ItemDrag(MenuBar& bar, Modifiers& modifiers, const Keyboard& keyboard)
    : bar_(bar),
      connection_(bar.connection()),
      modifiers_(modifiers),
      keyboard_(keyboard),
      asking_(connection_.loop(), questionPause, [this] { askAgain(); }) {
    events_ = connection_.onWindow(bar.window(), [this](const auto& event) { handle(event); });
    modifierChanges_ = modifiers_.onChange([this] { grab(); });
    ends_ = bar_.onLetGo([this] {
        if (!heldEscape_)
            giveKeyboardBack();
    });
    grab();
}

ItemDrag::~ItemDrag() {
    giveKeyboardBack();
}

/// A grab on the bar comes before what its items, ours and others', do with the press.
void ItemDrag::grab() const {
    xcb_connection_t* raw = connection_.raw();
    xcb_ungrab_button(raw, XCB_BUTTON_INDEX_1, bar_.window(), XCB_MOD_MASK_ANY);
    for (const auto locks : modifiers_.lockCombinations()) {
        xcb_grab_button(
            raw, 0, bar_.window(),
            XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE | XCB_EVENT_MASK_BUTTON_1_MOTION,
            XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC, XCB_WINDOW_NONE, XCB_CURSOR_NONE, XCB_BUTTON_INDEX_1,
            static_cast<std::uint16_t>(modifiers_.superMask() | locks));
    }
}

void ItemDrag::handle(const xcb_generic_event_t& event) {
    switch (event.response_type & 0x7f) {
        case XCB_BUTTON_PRESS:
            pressed(reinterpret_cast<const xcb_button_press_event_t&>(event));
            break;
        case XCB_MOTION_NOTIFY:
            move(reinterpret_cast<const xcb_motion_notify_event_t&>(event));
            break;
        case XCB_BUTTON_RELEASE:
            if (reinterpret_cast<const xcb_button_release_event_t&>(event).detail == XCB_BUTTON_INDEX_1)
                released();
            break;
        case XCB_KEY_PRESS:
            keyPressed(reinterpret_cast<const xcb_key_press_event_t&>(event).detail);
            break;
        case XCB_KEY_RELEASE:
            keyReleased(reinterpret_cast<const xcb_key_release_event_t&>(event).detail);
            break;
        default:
            break;
    }
}

void ItemDrag::pressed(const xcb_button_press_event_t& event) {
    bar_.localEvents().notePress(event.time);
    // While another button is held the pointer stays ours, whatever is pressed next.
    if (event.detail == XCB_BUTTON_INDEX_1 && (event.state & modifiers_.superMask()) != 0)
        begin(event);
}

void ItemDrag::begin(const xcb_button_press_event_t& event) {
    // The end of an earlier drag has been lost.
    bar_.putBack();
    moving_ = false;
    // Whatever is open closes. Nobody can keep the item from being taken.
    bar_.localEvents().deliver({.type = EventType::leftMouseDown,
                                .modifierFlags = modifiers_.flags(event.state),
                                .windowNumber = bar_.window()});
    auto* item = bar_.itemAt(event.event_x);
    if (!item || bar_.isLong(*item))
        return;
    bar_.take(*item);
    startX_ = event.event_x;
    offsetInItem_ = event.event_x - item->place()->x;
}

/// A click is no use of Super either, to those who see keys alone. One on the bare bar does nothing at all.
void ItemDrag::released() {
    if (!moving_ && bar_.taken())
        useSuper();
    bar_.drop();
}

void ItemDrag::move(const xcb_motion_notify_event_t& event) {
    if (!bar_.taken())
        return;
    if (!moving_ && std::abs(event.event_x - startX_) < bar_.appearance().pixels(dragThreshold))
        return;
    if (!std::exchange(moving_, true))
        useSuper();
    if (!hasKeyboard_) {
        questionsLeft_ = mostQuestions;
        asking_.request();
    }
    bar_.dragTo(event.event_x - offsetInItem_);
}

/// For Escape, whoever has the focus, and whoever else may have a shortcut with it. Where somebody keeps the
/// keyboard to himself, that may be a window manager that opens a menu for a Super key without another: it
/// gets another, and may then let go.
void ItemDrag::useSuper() {
    takeKeyboard();
    const auto key = keyboard_.meaninglessKey();
    if (hasKeyboard_ || !key || !canFakeInput(connection_))
        return;
    for (const std::uint8_t type : {XCB_KEY_PRESS, XCB_KEY_RELEASE})
        fakeKey(connection_, type, *key);
}

void ItemDrag::takeKeyboard() {
    const auto cookie = xcb_grab_keyboard(connection_.raw(), 0, bar_.window(), XCB_CURRENT_TIME,
                                          XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    const auto reply = owned(xcb_grab_keyboard_reply(connection_.raw(), cookie, nullptr));
    hasKeyboard_ = reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
}

/// Whoever has let go of it may have done so when the pointer rested.
void ItemDrag::askAgain() {
    if (!moving_ || !bar_.taken() || hasKeyboard_ || questionsLeft_-- <= 0)
        return;
    takeKeyboard();
    if (!hasKeyboard_)
        asking_.request();
}

void ItemDrag::giveKeyboardBack() {
    heldEscape_.reset();
    if (std::exchange(hasKeyboard_, false))
        xcb_ungrab_keyboard(connection_.raw(), XCB_CURRENT_TIME);
}

void ItemDrag::keyPressed(xcb_keycode_t key) {
    if (!bar_.taken() || !keyboard_.isEscape(key))
        return;
    // The rest of the key is nobody else's either.
    heldEscape_ = key;
    bar_.putBack();
}

void ItemDrag::keyReleased(xcb_keycode_t key) {
    if (key == heldEscape_)
        giveKeyboardBack();
}

}  // namespace velmo::x11
