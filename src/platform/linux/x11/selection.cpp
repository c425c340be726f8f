#include "selection.h"

#include "linux/x11/reply.h"
#include "linux/x11/server_grab.h"

namespace velmo::x11 {

xcb_window_t selectionOwner(const Connection& connection, xcb_atom_t selection) {
    const auto reply = owned(xcb_get_selection_owner_reply(
        connection.raw(), xcb_get_selection_owner(connection.raw(), selection), nullptr));
    return reply ? reply->owner : xcb_window_t{XCB_WINDOW_NONE};
}

bool acquireSelection(const Connection& connection, xcb_atom_t selection, xcb_window_t window) {
    // The server does nothing else between the question and the claim, so that of two that start at once
    // one sees the other.
    const ServerGrab grab(connection);
    if (selectionOwner(connection, selection) != XCB_WINDOW_NONE)
        return false;
    xcb_set_selection_owner(connection.raw(), window, selection, XCB_CURRENT_TIME);
    return selectionOwner(connection, selection) == window;
}

}  // namespace velmo::x11
