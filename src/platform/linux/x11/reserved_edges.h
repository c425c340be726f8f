#pragma once

#include "linux/event_loop/paced_work.h"
#include "linux/x11/connection.h"
#include "linux/x11/pixel_rect.h"

#include <cstdint>
#include <vector>

namespace velmo::x11 {

/// What docks of other programs have reserved for themselves at the edges of the screen, as far as a window
/// manager knows of them.
class ReservedEdges {
public:
    explicit ReservedEdges(Connection& connection);

    /// What docks at its left, right and lower edges leave of a monitor, in pixels of the root window. The
    /// upper edge is the menu bar's.
    PixelRect within(const PixelRect& monitor) const;

private:
    /// Pixels from an edge of the root window, and from where to where along it, both inclusive.
    struct Strut {
        std::int64_t depth = 0;
        std::int64_t begin = 0;
        std::int64_t end = 0;

        bool meets(int place, int length) const {
            return begin < std::int64_t{place} + length && end >= place;
        }
    };
    struct Dock {
        Strut left;
        Strut right;
        Strut bottom;
    };

    void handle(const xcb_generic_event_t& event);
    void read();

    Connection& connection_;
    PixelRect root_;
    std::vector<Dock> docks_;
    PacedWork reading_;
    Registration changes_;
};

}  // namespace velmo::x11
