#pragma once

#include "lifetime.h"
#include "linux/x11/connection.h"
#include "linux/x11/pixel_rect.h"

#include <memory>

namespace velmo::x11 {

/// Keeps the menu bar's strip free of other windows. A window manager reserves space only for windows
/// that it manages, and keeps some clicks on those to itself; so the bar is not managed, and a dock
/// window that is lies hidden right beneath it. The bar follows the dock in the stacking order: above
/// ordinary windows, below one that fills the screen.
class ReservedStrip {
public:
    ReservedStrip(Connection& connection, xcb_window_t bar);
    ~ReservedStrip();
    ReservedStrip(const ReservedStrip&) = delete;
    ReservedStrip& operator=(const ReservedStrip&) = delete;

    /// `area` in pixels of the root window. Space can be reserved at an edge of the root window only: where
    /// the area is not `atTheTop`, other windows are not kept off it.
    void reserve(const PixelRect& area, bool atTheTop);
    /// Asks for the window to be shown, again and again for a while: a window manager that is just starting
    /// loses requests.
    void show();
    /// A lifted bar is above everything, also above a window that fills the screen.
    void setBarLifted(bool lifted);

private:
    void configure() const;
    void handleOwn(const xcb_generic_event_t& event);
    void handleRoot(const xcb_generic_event_t& event);
    void findTopLevel();
    void stackBar() const;

    Connection& connection_;
    xcb_window_t bar_;
    xcb_window_t window_;
    /// The dock window, or the frame that a window manager has put around it.
    xcb_window_t topLevel_;
    PixelRect area_;
    bool shown_ = false;
    bool barIsLifted_ = false;
    int attempts_ = 0;
    std::shared_ptr<Timer> nextAttempt_;
    Registration events_;
    Registration rootEvents_;
    Lifetime lifetime_;
};

}  // namespace velmo::x11
