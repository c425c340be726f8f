#include "single_instance.h"

#include "linux/x11/selection.h"
#include "linux/x11/server_grab.h"

namespace velmo::x11 {

SingleInstance::SingleInstance(Connection& connection)
    : connection_(connection), window_(connection.newId()) {
    xcb_create_window(connection.raw(), 0, window_, connection.root(), -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    events_ = connection.onWindow(window_, [this](const xcb_generic_event_t& event) {
        if ((event.response_type & 0x7f) == XCB_CLIENT_MESSAGE)
            receive(reinterpret_cast<const xcb_client_message_event_t&>(event));
    });
}

SingleInstance::~SingleInstance() {
    xcb_destroy_window(connection_.raw(), window_);
}

void SingleInstance::receive(const xcb_client_message_event_t& message) const {
    if (message.type == connection_.atoms().velmoReopen && onReopen_) {
        onReopen_();
    } else if (message.type == connection_.atoms().velmoCommand && onCommand_) {
        if (const auto command = commandIn(message))
            onCommand_(*command);
    }
}

std::optional<ApplicationCommand> SingleInstance::commandIn(const xcb_client_message_event_t& message) {
    const auto number = message.data.data32[0];
    if (message.format != 32 || number < static_cast<std::uint32_t>(ApplicationCommand::toggle) ||
        number > static_cast<std::uint32_t>(ApplicationCommand::quit))
        return std::nullopt;
    return static_cast<ApplicationCommand>(number);
}

SingleInstance::Place SingleInstance::acquire() {
    const auto& atoms = connection_.atoms();
    // An instance is the tray only for as long as it has this selection, too.
    const ServerGrab grab(connection_);
    if (selectionOwner(connection_, atoms.velmoInstance) != XCB_WINDOW_NONE)
        return Place::taken;
    if (selectionOwner(connection_, atoms.netSystemTraySelection) != XCB_WINDOW_NONE)
        return Place::otherTray;
    return acquireSelection(connection_, atoms.velmoInstance, window_) ? Place::ours : Place::taken;
}

bool SingleInstance::askToReopen() const {
    const auto owner = selectionOwner(connection_, connection_.atoms().velmoInstance);
    if (owner == XCB_WINDOW_NONE)
        return false;
    connection_.sendMessage(owner, XCB_EVENT_MASK_NO_EVENT, owner, connection_.atoms().velmoReopen, {});
    connection_.sync();
    return true;
}

}  // namespace velmo::x11
