#pragma once

#include "linux/x11/connection.h"

namespace velmo::x11 {

/// Who owns a selection: the X server's way to say who plays a part that only one client can play.
xcb_window_t selectionOwner(const Connection& connection, xcb_atom_t selection);

/// Makes `window` the owner unless another one is. True where it is the owner afterwards.
bool acquireSelection(const Connection& connection, xcb_atom_t selection, xcb_window_t window);

}  // namespace velmo::x11
