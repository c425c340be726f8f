#pragma once

#include "linux/x11/connection.h"
#include "linux/x11/full_screen_windows.h"
#include "linux/x11/pixel_rect.h"
#include "linux/x11/top_window.h"

#include <functional>

namespace velmo::x11 {

/// Where the bar's window is: above all managed windows, and off the screen while one of them fills it. It
/// does not go below that one, because some window managers raise windows that are not theirs above all
/// others.
class BarPlace {
public:
    /// `dock` is the managed window that reserves the bar's space. `onLeave` is called after a window has
    /// come to fill the screen.
    BarPlace(Connection& connection, xcb_window_t bar, xcb_window_t dock, std::function<void()> onLeave);

    /// Both in pixels of the root window.
    void setArea(const PixelRect& area, const PixelRect& monitor);
    /// A lifted bar is above everything, also above a window that fills the screen.
    void setLifted(bool lifted);
    bool isAway() const { return fullScreenWindows_.coverArea() && !isLifted_; }

private:
    void configure() const;
    void coverChanged();

    Connection& connection_;
    xcb_window_t bar_;
    xcb_window_t dock_;
    PixelRect area_;
    bool isLifted_ = false;
    std::function<void()> onLeave_;
    TopWindow topWindow_;
    FullScreenWindows fullScreenWindows_;
};

}  // namespace velmo::x11
