#pragma once

#include "linux/x11/connection.h"

#include <xcb/res.h>

#include <cstdint>
#include <optional>

namespace velmo::x11 {

/// Asks which process has made a window, at once. The answer is to be taken once.
class ProcessQuestion {
public:
    ProcessQuestion(const Connection& connection, xcb_window_t window);

    /// Absent where the server does not know it.
    std::optional<std::int32_t> answer() const;

private:
    xcb_connection_t* connection_;
    xcb_res_query_client_ids_cookie_t cookie_;
};

/// The process that made a window. Absent where the server does not know it.
inline std::optional<std::int32_t> processOfClient(const Connection& connection, xcb_window_t window) {
    return ProcessQuestion(connection, window).answer();
}

}  // namespace velmo::x11
