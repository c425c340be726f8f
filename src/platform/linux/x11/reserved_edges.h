#pragma once

#include "linux/event_loop/paced_work.h"
#include "linux/x11/connection.h"
#include "linux/x11/dock_strut.h"
#include "linux/x11/pixel_rect.h"

#include <vector>

namespace velmo::x11 {

/// What docks of other programs have reserved for themselves at the edges of the screen, as far as a window
/// manager knows of them.
class ReservedEdges {
public:
    explicit ReservedEdges(Connection& connection);

    /// What docks at its left, right and lower edges leave of a monitor, in pixels of the root window. The
    /// upper edge is the menu bar's.
    PixelRect within(const PixelRect& monitor) const { return spaceLeftBy(docks_, monitor, root_); }

private:
    void handle(const xcb_generic_event_t& event);
    void read();

    Connection& connection_;
    PixelRect root_;
    std::vector<DockStrut> docks_;
    PacedWork reading_;
    Registration changes_;
};

}  // namespace velmo::x11
