#pragma once

#include "linux/x11/connection.h"
#include "linux/x11/property_question.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace velmo::x11 {

/// Knows what the window manager of the moment manages: windows that it has marked, what holds a marked one,
/// and the frames that it made. A menu of its own holds nobody's window.
class ManagedWindows {
public:
    explicit ManagedWindows(const Connection& connection);

    /// For each of these children of the root window. The server is waited for as often as frames are deep,
    /// however many they are.
    std::vector<bool> contain(const std::vector<xcb_window_t>& windows) const;
    /// True where it is the window manager that has put another program's `window` into `parent`, and not
    /// that program, which may do so for reasons of its own.
    bool havePutInto(xcb_window_t parent, xcb_window_t window) const;
    /// One that has just begun marks what it has framed, and makes itself known, only after it has done so:
    /// true where it cannot be known yet who has put the window there.
    bool mayHavePutInto(xcb_window_t parent, xcb_window_t window) const {
        return parent != connection_.root() && !haveOneMaker(parent, window);
    }

private:
    /// A window in one of those that are asked about, or that one itself.
    struct Member {
        std::size_t asked;
        xcb_window_t window;
    };

    /// Marks those asked about that are known by their members, and returns what is in the others' members.
    std::vector<Member> look(const std::vector<Member>& members, std::vector<bool>& managed) const;
    bool haveOneMaker(xcb_window_t window, xcb_window_t other) const {
        return (window & ~resourceMask_) == (other & ~resourceMask_);
    }
    bool managerMade(xcb_window_t window) const;
    PropertyQuestion askForMark(xcb_window_t window) const;

    const Connection& connection_;
    std::uint32_t resourceMask_;
    xcb_window_t managersWindow_ = XCB_WINDOW_NONE;
};

}  // namespace velmo::x11
