#pragma once

#include "linux/x11/connection.h"

#include <functional>

namespace velmo::x11 {

/// One Velmo a display. A selection tells who it is: unlike a name on the session bus it is there
/// wherever there is a display, and a user's second display has one of its own.
class SingleInstance {
public:
    explicit SingleInstance(Connection& connection);
    ~SingleInstance();
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;

    /// False where another instance runs on the display.
    bool acquire();
    /// Tells the running instance that it was started once more. False where none runs any longer.
    bool askToReopen() const;
    /// Called when another start has asked.
    void setOnReopen(std::function<void()> handler) { onReopen_ = std::move(handler); }

private:
    Connection& connection_;
    xcb_window_t window_;
    std::function<void()> onReopen_;
    Registration events_;
};

}  // namespace velmo::x11
