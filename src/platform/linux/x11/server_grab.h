#pragma once

#include "linux/x11/connection.h"

namespace velmo::x11 {

/// While one of these lives, the server does what this connection asks for and nothing else.
class ServerGrab {
public:
    explicit ServerGrab(const Connection& connection) : connection_(connection) {
        xcb_grab_server(connection_.raw());
    }
    ~ServerGrab() {
        xcb_ungrab_server(connection_.raw());
        xcb_flush(connection_.raw());
    }
    ServerGrab(const ServerGrab&) = delete;
    ServerGrab& operator=(const ServerGrab&) = delete;

private:
    const Connection& connection_;
};

}  // namespace velmo::x11
