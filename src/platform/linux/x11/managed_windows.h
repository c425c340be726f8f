#pragma once

#include "linux/x11/connection.h"

#include <cstdint>

namespace velmo::x11 {

/// Knows what the window manager of the moment manages: windows that it has marked, what holds a marked one,
/// and the frames that it made. A menu of its own holds nobody's window.
class ManagedWindows {
public:
    explicit ManagedWindows(const Connection& connection);

    /// Of a child of the root window.
    bool contain(xcb_window_t window) const;
    /// True where it is the window manager that has put another program's `window` into `parent`, and not
    /// that program, which may do so for reasons of its own.
    bool havePutInto(xcb_window_t parent, xcb_window_t window) const;

private:
    bool contain(xcb_window_t window, int depth) const;
    bool haveOneMaker(xcb_window_t window, xcb_window_t other) const {
        return (window & ~resourceMask_) == (other & ~resourceMask_);
    }
    bool managerMade(xcb_window_t window) const;
    bool isMarked(xcb_window_t window) const;

    const Connection& connection_;
    std::uint32_t resourceMask_;
    xcb_window_t managersWindow_ = XCB_WINDOW_NONE;
};

}  // namespace velmo::x11
