#pragma once

#include "linux/event_loop/paced_work.h"
#include "linux/x11/connection.h"
#include "linux/x11/pixel_rect.h"
#include "scoped_timer.h"

#include <functional>
#include <vector>

namespace velmo::x11 {

/// Knows whether a window fills the screen at the moment. A window manager keeps such a one above docks as
/// long as the user works with it; so it counts where it is above a dock of ours, or where that one is not
/// shown. Older programs do not say that theirs fills the screen, but make it as large and ask for no frame;
/// not all window managers understand that, so it counts too where it is the active one.
class FullScreenWindows {
public:
    /// `dock` is managed. `onChange` is called after `coverArea` has changed.
    FullScreenWindows(Connection& connection, xcb_window_t dock, std::function<void()> onChange);
    FullScreenWindows(const FullScreenWindows&) = delete;
    FullScreenWindows& operator=(const FullScreenWindows&) = delete;

    /// At an edge of the monitor that matters; both in pixels of the root window.
    void setArea(const PixelRect& area, const PixelRect& monitor);
    bool coverArea() const { return coverArea_; }

private:
    void handle(const xcb_generic_event_t& event);
    bool mayMatter(const xcb_configure_notify_event_t& change) const;
    void look();
    void read();
    struct Client {
        xcb_window_t window;
        bool saysSo;
        /// The child of the root window that it is, or that it is in.
        xcb_window_t topLevel = XCB_WINDOW_NONE;
    };
    std::vector<Client> likelyClients() const;
    /// Those of them that lie over the area.
    std::vector<Client> coveringClients() const;
    bool isBareProgram(xcb_window_t window) const;
    xcb_window_t activeWindow() const;
    bool isSeen(xcb_window_t window) const;
    bool find() const;

    Connection& connection_;
    xcb_window_t dock_;
    std::function<void()> onChange_;
    PixelRect area_;
    PixelRect monitor_;
    bool coverArea_ = false;
    PacedWork looking_;
    ScopedTimer secondLook_;
    Registration events_;
};

}  // namespace velmo::x11
