#pragma once

#include "lifetime.h"
#include "linux/x11/connection.h"
#include "linux/x11/pixel_rect.h"

#include <memory>

namespace velmo::x11 {

/// Keeps the menu bar's strip free of other windows. A window manager reserves space only for windows
/// that it manages, and keeps some clicks on those to itself; so the bar is not managed, and a dock
/// window that is lies hidden beneath it.
class ReservedStrip {
public:
    explicit ReservedStrip(Connection& connection);
    ~ReservedStrip();
    ReservedStrip(const ReservedStrip&) = delete;
    ReservedStrip& operator=(const ReservedStrip&) = delete;

    /// `area` in pixels of the root window. Space can be reserved at an edge of the root window only: where
    /// the area is not `atTheTop`, other windows are not kept off it.
    void reserve(const PixelRect& area, bool atTheTop);
    /// Asks for the window to be shown, again and again for a while: a window manager that is just starting
    /// loses requests.
    void show();
    /// The dock window.
    xcb_window_t window() const { return window_; }

private:
    void configure() const;
    void handleOwn(const xcb_generic_event_t& event);

    Connection& connection_;
    xcb_window_t window_;
    PixelRect area_;
    bool shown_ = false;
    int attempts_ = 0;
    std::shared_ptr<Timer> nextAttempt_;
    Registration events_;
    Lifetime lifetime_;
};

}  // namespace velmo::x11
