#pragma once

#include "application.h"
#include "linux/dbus/bus.h"

#include <functional>
#include <memory>
#include <optional>
#include <string_view>

namespace velmo::dbus {

/// The program as launchers know it: by a name on the session's bus, which starts it where it does not run.
/// Whoever speaks to the connection by another of its names, or by its number, is refused.
/// Where the name is taken, by the Velmo of another display, we get it when that one ends.
class ApplicationService {
public:
    struct Handlers {
        /// The user has started the program once more.
        std::function<void()> activated;
        std::function<void(ApplicationCommand)> command;
    };

    /// Where the bus has started the program, what it was started for waits; an activation among that is the
    /// start itself, of which nobody is told.
    ApplicationService(std::shared_ptr<Bus> bus, Handlers handlers, bool isStartedByBus);

    /// What a call of an action asks for. Absent, with the error set, where that is nothing that there is.
    static std::optional<ApplicationCommand> commandIn(sd_bus_message* call, sd_bus_error* error);

private:
    struct Table;

    static int activate(sd_bus_message* message, void* context, sd_bus_error* error);
    static int activateAction(sd_bus_message* message, void* context, sd_bus_error* error);
    void claimName();

    std::shared_ptr<Bus> bus_;
    Handlers handlers_;
    bool isStarting_;
    Registration object_;
    Registration claim_;
    Registration askingForRest_;
};

}  // namespace velmo::dbus
