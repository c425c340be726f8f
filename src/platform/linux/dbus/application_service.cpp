#include "application_service.h"

#include "linux/application/program_arguments.h"

#include <cerrno>
#include <string_view>
#include <utility>

namespace velmo::dbus {

namespace {

constexpr const char* applicationName = "org.velmo.Velmo";
constexpr const char* applicationPath = "/org/velmo/Velmo";
constexpr const char* applicationInterface = "org.freedesktop.Application";
/// Of the bus: we wait for the name where it is taken, and let nobody take it from us.
constexpr std::uint32_t waitForName = 0;

/// A filter of the bus that lets a program speak to one name of a connection lets it send anything to the
/// connection itself. This connection has other names, to which every program with an icon may speak.
bool isSentToName(sd_bus_message* message) {
    const char* destination = sd_bus_message_get_destination(message);
    return destination && std::string_view(destination) == applicationName;
}

int refuse(sd_bus_error* error) {
    return sd_bus_error_setf(error, SD_BUS_ERROR_ACCESS_DENIED, "to be asked of %s", applicationName);
}

}  // namespace

struct ApplicationService::Table {
    static constexpr sd_bus_vtable entries[] = {
        SD_BUS_VTABLE_START(0),
        SD_BUS_METHOD("Activate", "a{sv}", "", ApplicationService::activate, SD_BUS_VTABLE_UNPRIVILEGED),
        // There is nothing that could be opened in us.
        SD_BUS_METHOD("Open", "asa{sv}", "", ApplicationService::activate, SD_BUS_VTABLE_UNPRIVILEGED),
        SD_BUS_METHOD("ActivateAction", "sava{sv}", "", ApplicationService::activateAction,
                      SD_BUS_VTABLE_UNPRIVILEGED),
        SD_BUS_VTABLE_END,
    };
};

ApplicationService::ApplicationService(std::shared_ptr<Bus> bus, Handlers handlers, bool isStartedByBus)
    : bus_(std::move(bus)), handlers_(std::move(handlers)), isStarting_(isStartedByBus) {
    object_ = bus_->addObject(applicationPath, applicationInterface, Table::entries, this);
    claimName();
}

void ApplicationService::claimName() {
    const auto appendName = [](sd_bus_message* message) {
        return sd_bus_message_append(message, "su", applicationName, waitForName);
    };
    claim_ = bus_->call(
        {daemonName, daemonPath, daemonName, "RequestName", appendName}, [this](const Answer& /*answer*/) {
            // What has waited for the name comes before the next answer.
            askingForRest_ = bus_->call({daemonName, daemonPath, daemonName, "GetId"},
                                        [this](const Answer& /*answer*/) { isStarting_ = false; });
        });
}

int ApplicationService::activate(sd_bus_message* message, void* context, sd_bus_error* error) {
    if (!isSentToName(message))
        return refuse(error);
    auto& self = *static_cast<ApplicationService*>(context);
    const int replied = sd_bus_reply_method_return(message, "");
    if (!std::exchange(self.isStarting_, false))
        self.handlers_.activated();
    return replied;
}

int ApplicationService::activateAction(sd_bus_message* message, void* context, sd_bus_error* error) {
    if (!isSentToName(message))
        return refuse(error);
    auto& self = *static_cast<ApplicationService*>(context);
    const auto command = commandIn(message, error);
    if (!command)
        return -EINVAL;
    self.isStarting_ = false;
    const int replied = sd_bus_reply_method_return(message, "");
    self.handlers_.command(*command);
    return replied;
}

std::optional<ApplicationCommand> ApplicationService::commandIn(sd_bus_message* call, sd_bus_error* error) {
    const auto refuse = [error](const char* why) {
        sd_bus_error_set(error, SD_BUS_ERROR_INVALID_ARGS, why);
        return std::nullopt;
    };
    const char* action = nullptr;
    if (sd_bus_message_read(call, "s", &action) < 0 || sd_bus_message_enter_container(call, 'a', "v") < 0)
        return refuse("an action is wanted");
    if (sd_bus_message_at_end(call, 0) == 0)
        return refuse("no action has a parameter");
    const auto command = ProgramArguments::command(action);
    return command ? command : refuse("no such action");
}

}  // namespace velmo::dbus
