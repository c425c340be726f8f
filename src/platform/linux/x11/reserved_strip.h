#pragma once

#include "lifetime.h"
#include "linux/event_loop/paced_work.h"
#include "linux/x11/bar_strut.h"
#include "linux/x11/connection.h"
#include "linux/x11/pixel_rect.h"
#include "scoped_timer.h"

#include <optional>
#include <string>
#include <vector>

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

    /// At the top of one of the monitors, all in pixels of the root window. What that takes depends on the
    /// window manager, and is done anew when another one comes.
    void reserve(const PixelRect& area, const std::vector<PixelRect>& monitors);
    /// Asks for the window to be shown, twice a second until it is, for ten seconds at most: a window manager
    /// that is just starting loses requests, or takes away what it has shown. Taken away later, it stays
    /// away.
    void show();
    /// Lets a window manager know the server's time, by a change of a property, after the keyboard has been
    /// given to somebody. It gives the keyboard away as of the latest time that it knows, which the server
    /// takes for nothing where that is older than ours, and never again to a window that it believes to have
    /// it.
    void tellTime() const;
    /// The dock window.
    xcb_window_t window() const { return window_; }

private:
    void configure() const;
    void setStrut(const std::string& manager);
    void withdraw();
    std::string windowManager() const;
    void followWindowManager();
    void handleOwn(const xcb_generic_event_t& event);
    void handleRoot(const xcb_generic_event_t& event);

    Connection& connection_;
    xcb_window_t window_;
    PixelRect area_;
    std::vector<PixelRect> monitors_;
    std::optional<Strut> strut_;
    /// Where the strip lay when the strut was set.
    PixelRect strutArea_;
    bool shown_ = false;
    int attempts_ = 0;
    ScopedTimer nextAttempt_;
    int looksForName_ = 0;
    PacedWork following_;
    Registration events_;
    Registration rootEvents_;
    Lifetime lifetime_;
};

}  // namespace velmo::x11
