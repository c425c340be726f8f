#pragma once

#include "linux/event_loop/posted_once.h"
#include "linux/x11/connection.h"
#include "run_loop.h"

#include <chrono>
#include <memory>
#include <vector>

namespace velmo::x11 {

/// Keeps a window that no window manager knows above those that one manages, which are raised and shown over
/// it as the user goes on. What nobody manages stays where it is: menus, notifications, a locked screen.
class TopWindow {
public:
    TopWindow(Connection& connection, xcb_window_t window);
    ~TopWindow();
    TopWindow(const TopWindow&) = delete;
    TopWindow& operator=(const TopWindow&) = delete;

private:
    void handle(const xcb_generic_event_t& event);
    void check();
    /// False where something lies over it that is not known to be managed.
    bool rise();
    void endSecondLook();
    std::vector<xcb_window_t> windowsAbove() const;
    std::vector<xcb_window_t> windowsOver() const;
    bool mayRaise();

    Connection& connection_;
    xcb_window_t window_;
    /// Of the raises that are counted.
    std::chrono::steady_clock::time_point countBegin_;
    int raises_ = 0;
    PostedOnce checking_;
    std::shared_ptr<Timer> secondLook_;
    Registration events_;
};

}  // namespace velmo::x11
