#pragma once

#include "linux/x11/connection.h"

#include <cstdint>

namespace velmo::x11 {

/// True where the server has the extension XTEST. Without, its requests would end the connection.
bool canFakeInput(const Connection& connection);

/// Presses or releases a key for the user: XCB_KEY_PRESS or XCB_KEY_RELEASE.
void fakeKey(const Connection& connection, std::uint8_t type, xcb_keycode_t key);

}  // namespace velmo::x11
