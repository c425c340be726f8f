#pragma once

#include "linux/current_event.h"
#include "linux/x11/connection.h"
#include "tracking_area.h"

namespace velmo::x11 {

/// Tells the owner when the pointer enters and leaves a window.
class WindowTracking : public TrackingArea {
public:
    WindowTracking(Connection& connection, CurrentEvent& currentEvent, xcb_window_t window,
                   TrackingAreaOwner& owner);
    ~WindowTracking() override;
    WindowTracking(const WindowTracking&) = delete;
    WindowTracking& operator=(const WindowTracking&) = delete;

private:
    void select(std::uint32_t mask) const;
    void handle(const xcb_generic_event_t& event);

    Connection& connection_;
    CurrentEvent& currentEvent_;
    xcb_window_t window_;
    TrackingAreaOwner& owner_;
    Registration events_;
};

}  // namespace velmo::x11
