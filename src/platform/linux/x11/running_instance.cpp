#include "running_instance.h"

#include "linux/event_loop/event_loop.h"
#include "linux/x11/connection.h"
#include "linux/x11/selection.h"

namespace velmo::x11 {

namespace {

constexpr Seconds patience = 5.0;

/// True once the window has gone, or its display.
bool waitForEnd(Connection& connection, xcb_window_t window) {
    bool gone = false;
    const auto end = [&] {
        gone = true;
        connection.loop().stop();
    };
    connection.setOnLost(end);
    const auto events = connection.onWindow(window, [&](const xcb_generic_event_t& event) {
        if ((event.response_type & 0x7f) == XCB_DESTROY_NOTIFY)
            end();
    });
    const auto timer = connection.loop().schedule(patience, [&] { connection.loop().stop(); });
    connection.loop().run();
    timer->invalidate();
    return gone;
}

}  // namespace

std::optional<std::string> tellRunningInstance(ApplicationCommand command) {
    EventLoop loop;
    std::string problem;
    const auto connection = Connection::open(loop, problem);
    if (!connection)
        return problem;
    const auto instance = connection->atoms().velmoInstance;
    const auto window = selectionOwner(*connection, instance);
    if (window != XCB_WINDOW_NONE)
        connection->selectEvents(window, XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    // Asked again: of one that has gone before, nobody would tell.
    if (window == XCB_WINDOW_NONE || selectionOwner(*connection, instance) != window)
        return "no Velmo runs on this display";
    connection->sendMessage(window, XCB_EVENT_MASK_NO_EVENT, window, connection->atoms().velmoCommand,
                            {static_cast<std::uint32_t>(command)});
    connection->sync();
    if (command == ApplicationCommand::quit && !waitForEnd(*connection, window))
        return "the Velmo that runs on this display has not ended within 5 seconds";
    return std::nullopt;
}

}  // namespace velmo::x11
