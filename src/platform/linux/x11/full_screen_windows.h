#pragma once

#include "linux/event_loop/posted_once.h"
#include "linux/x11/connection.h"
#include "linux/x11/pixel_rect.h"
#include "run_loop.h"

#include <functional>
#include <memory>
#include <vector>

namespace velmo::x11 {

/// Knows whether a window fills the screen at the moment. A window manager keeps such a one above docks as
/// long as the user works with it; so it counts where it is above a dock of ours, or where that one is not
/// shown.
class FullScreenWindows {
public:
    /// `dock` is managed. `onChange` is called after `coverArea` has changed.
    FullScreenWindows(Connection& connection, xcb_window_t dock, std::function<void()> onChange);
    ~FullScreenWindows();
    FullScreenWindows(const FullScreenWindows&) = delete;
    FullScreenWindows& operator=(const FullScreenWindows&) = delete;

    /// At an edge of the monitor that matters, in pixels of the root window.
    void setArea(const PixelRect& area);
    bool coverArea() const { return coverArea_; }

private:
    void handle(const xcb_generic_event_t& event);
    bool mayMatter(const xcb_configure_notify_event_t& change) const;
    void look();
    void endSecondLook();
    void read();
    std::vector<xcb_window_t> fullScreenClients() const;
    /// The children of the root window with those of the clients that lie over the area.
    std::vector<xcb_window_t> covering(const std::vector<xcb_window_t>& clients) const;
    bool isSeen(xcb_window_t window) const;
    bool find() const;

    Connection& connection_;
    xcb_window_t dock_;
    std::function<void()> onChange_;
    PixelRect area_;
    bool coverArea_ = false;
    PostedOnce looking_;
    std::shared_ptr<Timer> secondLook_;
    Registration events_;
};

}  // namespace velmo::x11
