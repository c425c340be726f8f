#pragma once

#include "application.h"
#include "linux/x11/connection.h"

#include <functional>
#include <optional>

namespace velmo::x11 {

/// One Velmo a display. A selection tells who it is: unlike a name on the session bus it is there
/// wherever there is a display, and a user's second display has one of its own.
class SingleInstance {
public:
    explicit SingleInstance(Connection& connection);
    ~SingleInstance();
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;

    /// Who has the display.
    enum class Place { ours, taken, otherTray };
    /// Ours where nobody has it. Where another program is its tray we never have it, so that no command
    /// reaches an instance that is about to give up, and nothing of it is seen on the screen.
    Place acquire();
    /// Tells the running instance that it was started once more. False where none runs any longer.
    bool askToReopen() const;
    /// Called when another start has asked.
    void setOnReopen(std::function<void()> handler) { onReopen_ = std::move(handler); }
    /// Called with what `tellRunningInstance` asks for in another process.
    void setOnCommand(std::function<void(ApplicationCommand)> handler) { onCommand_ = std::move(handler); }

    /// What a message of the type of commands asks for. Absent where it asks for nothing that there is.
    static std::optional<ApplicationCommand> commandIn(const xcb_client_message_event_t& message);

private:
    void receive(const xcb_client_message_event_t& message) const;

    Connection& connection_;
    xcb_window_t window_;
    std::function<void()> onReopen_;
    std::function<void(ApplicationCommand)> onCommand_;
    Registration events_;
};

}  // namespace velmo::x11
