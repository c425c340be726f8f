#pragma once

#include "linux/x11/connection.h"
#include "linux/x11/full_screen_windows.h"
#include "linux/x11/pixel_rect.h"
#include "linux/x11/top_window.h"

namespace velmo::x11 {

/// Where the bar's window is: above all managed windows, and off the screen while one of them fills it. It
/// does not go below that one, because some window managers raise windows that are not theirs above all
/// others.
class BarPlace {
public:
    /// `dock` is the managed window that reserves the bar's space.
    BarPlace(Connection& connection, xcb_window_t bar, xcb_window_t dock);

    /// In pixels of the root window.
    void setArea(const PixelRect& area);
    /// A lifted bar is above everything, also above a window that fills the screen.
    void setLifted(bool lifted);

private:
    void configure() const;

    Connection& connection_;
    xcb_window_t bar_;
    xcb_window_t dock_;
    PixelRect area_;
    bool isLifted_ = false;
    TopWindow topWindow_;
    FullScreenWindows fullScreenWindows_;
};

}  // namespace velmo::x11
