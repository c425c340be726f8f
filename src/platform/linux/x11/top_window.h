#pragma once

#include "linux/event_loop/paced_work.h"
#include "linux/x11/connection.h"
#include "linux/x11/pixel_rect.h"
#include "scoped_timer.h"

#include <chrono>
#include <optional>
#include <unordered_map>
#include <vector>

namespace velmo::x11 {

/// Keeps a window that no window manager knows above those that one manages, which are raised and shown over
/// it as the user goes on. What nobody manages stays where it is: menus, notifications, a locked screen.
/// One that raises itself whenever it is covered is left above, but for an attempt from time to time.
class TopWindow {
public:
    /// `beneath` is a child of the root window that it lies above whether somebody manages that one or not.
    TopWindow(Connection& connection, xcb_window_t window, xcb_window_t beneath = XCB_WINDOW_NONE);
    TopWindow(const TopWindow&) = delete;
    TopWindow& operator=(const TopWindow&) = delete;

    /// Looks at the order of the windows soon.
    void look() { checking_.request(); }

private:
    using Clock = std::chrono::steady_clock;

    /// Whether somebody manages a window, as far as is known. It is forgotten once that window is hidden or
    /// put elsewhere.
    struct Verdict {
        bool isManaged = false;
        /// From then on nobody relies on it that the window is not managed.
        Clock::time_point askAgain;
    };

    void handle(const xcb_generic_event_t& event);
    void forget(const xcb_generic_event_t& event);
    bool mayCover(const xcb_configure_notify_event_t& change);
    void check();
    /// Of what lies over it, the highest first. False where some of that is not known to be managed.
    bool riseOver(const std::vector<xcb_window_t>& over);
    /// Asks about what is not known yet, or not any more, of the windows; the highest of them first.
    void judge(const std::vector<xcb_window_t>& windows);
    void ask(const std::vector<xcb_window_t>& windows);
    bool isManaged(xcb_window_t window) const;
    Seconds untilSecondLook(const std::vector<xcb_window_t>& windows) const;
    std::vector<xcb_window_t> windowsAbove() const;
    std::vector<xcb_window_t> windowsOver() const;
    bool mayRaise();

    Connection& connection_;
    xcb_window_t window_;
    xcb_window_t beneath_;
    /// Since when raises are counted, and how many more there may be.
    Clock::time_point countBegin_;
    int raisesLeft_ = 0;
    /// Where it is, once that is known.
    std::optional<PixelRect> area_;
    std::unordered_map<xcb_window_t, Verdict> verdicts_;
    PacedWork checking_;
    ScopedTimer secondLook_;
    /// While it rests.
    ScopedTimer nextAttempt_;
    Registration events_;
};

}  // namespace velmo::x11
