#pragma once

#include "linux/x11/connection.h"

#include <cstdint>
#include <optional>

namespace velmo::x11 {

/// The process that made a window. Absent where the server does not know it.
std::optional<std::int32_t> processOfClient(const Connection& connection, xcb_window_t window);

}  // namespace velmo::x11
