#include "window_tracking.h"

#include <xcb/xinput.h>

namespace velmo::x11 {

WindowTracking::WindowTracking(Connection& connection, CurrentEvent& currentEvent, xcb_window_t window,
                               TrackingAreaOwner& owner)
    : connection_(connection), currentEvent_(currentEvent), window_(window), owner_(owner) {
    events_ = connection.onExtension(xcb_input_id, [this](const auto& event) { handle(event); });
    select(XCB_INPUT_XI_EVENT_MASK_ENTER | XCB_INPUT_XI_EVENT_MASK_LEAVE);
}

WindowTracking::~WindowTracking() {
    select(0);
}

void WindowTracking::select(std::uint32_t mask) const {
    const struct {
        xcb_input_event_mask_t head;
        std::uint32_t mask;
    } selection = {{XCB_INPUT_DEVICE_ALL_MASTER, 1}, mask};
    xcb_input_xi_select_events(connection_.raw(), window_, 1, &selection.head);
}

void WindowTracking::handle(const xcb_generic_event_t& event) {
    const auto type = reinterpret_cast<const xcb_ge_generic_event_t&>(event).event_type;
    if (type != XCB_INPUT_ENTER && type != XCB_INPUT_LEAVE)
        return;
    const auto& crossing = reinterpret_cast<const xcb_input_enter_event_t&>(event);
    if (crossing.event != window_)
        return;
    // The end of a grab is no entering; but where a grab begins, somebody else has the pointer from then on.
    if (type == XCB_INPUT_LEAVE) {
        const Event exited{EventType::mouseExited};
        currentEvent_.during(exited, [&] { owner_.mouseExitedWith(exited); });
    } else if (crossing.mode == XCB_INPUT_NOTIFY_MODE_NORMAL) {
        const Event entered{EventType::mouseEntered};
        currentEvent_.during(entered, [&] { owner_.mouseEnteredWith(entered); });
    }
}

}  // namespace velmo::x11
