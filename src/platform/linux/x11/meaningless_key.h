#pragma once

#include "linux/x11/connection.h"

namespace velmo::x11 {

/// Presses and releases a key that no keyboard layout gives a meaning. Nothing where there is none, or where
/// the server lets nobody press keys for the user.
void pressMeaninglessKey(const Connection& connection);

}  // namespace velmo::x11
