#pragma once

#include "linux/event_loop/paced_work.h"
#include "linux/x11/connection.h"
#include "linux/x11/pixel_rect.h"
#include "run_loop.h"

#include <chrono>
#include <memory>
#include <optional>
#include <vector>

namespace velmo::x11 {

/// Keeps a window that no window manager knows above those that one manages, which are raised and shown over
/// it as the user goes on. What nobody manages stays where it is: menus, notifications, a locked screen.
/// One that raises itself whenever it is covered is left above, but for an attempt from time to time.
class TopWindow {
public:
    /// `beneath` is a child of the root window that it lies above whether somebody manages that one or not.
    TopWindow(Connection& connection, xcb_window_t window, xcb_window_t beneath = XCB_WINDOW_NONE);
    ~TopWindow();
    TopWindow(const TopWindow&) = delete;
    TopWindow& operator=(const TopWindow&) = delete;

    /// Looks at the order of the windows soon.
    void look() { checking_.request(); }

private:
    void handle(const xcb_generic_event_t& event);
    bool mayCover(const xcb_configure_notify_event_t& change);
    void check();
    /// False where something lies over it that is not known to be managed.
    bool rise();
    void endSecondLook();
    std::vector<xcb_window_t> windowsAbove() const;
    std::vector<xcb_window_t> windowsOver() const;
    bool mayRaise();

    Connection& connection_;
    xcb_window_t window_;
    xcb_window_t beneath_;
    /// Since when raises are counted, and how many more there may be.
    std::chrono::steady_clock::time_point countBegin_;
    int raisesLeft_ = 0;
    /// Where it is, once that is known.
    std::optional<PixelRect> area_;
    PacedWork checking_;
    std::shared_ptr<Timer> secondLook_;
    /// While it rests.
    std::shared_ptr<Timer> nextAttempt_;
    Registration events_;
};

}  // namespace velmo::x11
