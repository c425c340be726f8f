#include "item_drag.h"

#include <cstdlib>
#include <utility>

namespace velmo::x11 {

namespace {

/// A hand is not perfectly still while it clicks. Points.
constexpr double dragThreshold = 3;

}  // namespace

ItemDrag::ItemDrag(MenuBar& bar, Modifiers& modifiers)
    : bar_(bar), connection_(bar.connection()), modifiers_(modifiers) {
    events_ = connection_.onWindow(bar.window(), [this](const auto& event) { handle(event); });
    modifierChanges_ = modifiers_.onChange([this] { grab(); });
    grab();
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
            begin(reinterpret_cast<const xcb_button_press_event_t&>(event));
            break;
        case XCB_MOTION_NOTIFY:
            move(reinterpret_cast<const xcb_motion_notify_event_t&>(event));
            break;
        case XCB_BUTTON_RELEASE:
            if (reinterpret_cast<const xcb_button_release_event_t&>(event).detail == XCB_BUTTON_INDEX_1)
                bar_.drop();
            break;
        default:
            break;
    }
}

void ItemDrag::begin(const xcb_button_press_event_t& event) {
    bar_.localEvents().notePress(event.time);
    if (event.detail != XCB_BUTTON_INDEX_1)
        return;
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
    moving_ = false;
}

void ItemDrag::move(const xcb_motion_notify_event_t& event) {
    const auto* item = bar_.taken();
    if (!item)
        return;
    if (!moving_ && std::abs(event.event_x - startX_) < bar_.appearance().pixels(dragThreshold))
        return;
    if (!std::exchange(moving_, true)) {
        const std::uint32_t above = XCB_STACK_MODE_ABOVE;
        xcb_configure_window(connection_.raw(), item->window(), XCB_CONFIG_WINDOW_STACK_MODE, &above);
    }
    bar_.dragTo(event.event_x - offsetInItem_);
}

}  // namespace velmo::x11
