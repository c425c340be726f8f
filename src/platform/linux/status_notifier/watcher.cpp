#include "watcher.h"

#include "linux/status_notifier/names.h"

#include <utility>

namespace velmo::status_notifier {

namespace {

/// Of the bus: another program may take the name, and we get it back when that one ends.
constexpr std::uint32_t allowReplacement = 1;

}  // namespace

struct Watcher::Table {
    static constexpr sd_bus_vtable entries[] = {
        SD_BUS_VTABLE_START(0),
        SD_BUS_METHOD("RegisterStatusNotifierItem", "s", "", Watcher::registerItem,
                      SD_BUS_VTABLE_UNPRIVILEGED),
        SD_BUS_METHOD("RegisterStatusNotifierHost", "s", "", Watcher::registerHost,
                      SD_BUS_VTABLE_UNPRIVILEGED),
        SD_BUS_PROPERTY("RegisteredStatusNotifierItems", "as", Watcher::getItems, 0, 0),
        SD_BUS_PROPERTY("IsStatusNotifierHostRegistered", "b", Watcher::getHasHost, 0, 0),
        SD_BUS_PROPERTY("ProtocolVersion", "i", Watcher::getVersion, 0, 0),
        SD_BUS_SIGNAL("StatusNotifierItemRegistered", "s", 0),
        SD_BUS_SIGNAL("StatusNotifierItemUnregistered", "s", 0),
        SD_BUS_SIGNAL("StatusNotifierHostRegistered", "", 0),
        SD_BUS_SIGNAL("StatusNotifierHostUnregistered", "", 0),
        SD_BUS_VTABLE_END,
    };
};

Watcher::Watcher(std::shared_ptr<dbus::Bus> bus, const std::string& family, Handler onRegistered)
    : bus_(std::move(bus)), name_(watcherName(family)), onRegistered_(std::move(onRegistered)) {
    object_ = bus_->addObject(watcherPath, name_, Table::entries, this);
    const auto appendName = [this](sd_bus_message* message) {
        return sd_bus_message_append(message, "su", name_.c_str(), allowReplacement);
    };
    claim_ = bus_->call({dbus::daemonName, dbus::daemonPath, dbus::daemonName, "RequestName", appendName},
                        [](const auto&) {});
}

Watcher::~Watcher() {
    const auto appendName = [this](sd_bus_message* message) {
        return sd_bus_message_append(message, "s", name_.c_str());
    };
    bus_->send({dbus::daemonName, dbus::daemonPath, dbus::daemonName, "ReleaseName", appendName});
}

void Watcher::withdraw(const ItemAddress& item) {
    if (items_.erase(item) > 0)
        emit("StatusNotifierItemUnregistered", item.text());
}

void Watcher::emit(const std::string& member, const std::optional<std::string>& text) {
    bus_->emit(watcherPath, name_, member, [&text](sd_bus_message* message) {
        return text ? sd_bus_message_append(message, "s", text->c_str()) : 0;
    });
}

int Watcher::registerItem(sd_bus_message* message, void* context, sd_bus_error* error) {
    auto& self = *static_cast<Watcher*>(context);
    const char* text = nullptr;
    const char* sender = sd_bus_message_get_sender(message);
    if (sd_bus_message_read(message, "s", &text) < 0 || !sender)
        return sd_bus_error_set(error, SD_BUS_ERROR_INVALID_ARGS, "a name is wanted");
    const auto address = parseItemAddress(text, sender);
    if (!address)
        return sd_bus_error_set(error, SD_BUS_ERROR_INVALID_ARGS, "neither a service nor an object's path");
    const int replied = sd_bus_reply_method_return(message, "");
    // Other hosts learn of it, too.
    if (self.items_.insert(*address).second)
        self.emit("StatusNotifierItemRegistered", address->text());
    self.onRegistered_(*address, sender);
    return replied;
}

/// We are a host ourselves, so that another one changes nothing for items.
int Watcher::registerHost(sd_bus_message* message, void* context, sd_bus_error* /*error*/) {
    auto& self = *static_cast<Watcher*>(context);
    const int replied = sd_bus_reply_method_return(message, "");
    self.emit("StatusNotifierHostRegistered");
    return replied;
}

int Watcher::getItems(sd_bus* /*bus*/, const char* /*path*/, const char* /*interface*/,
                      const char* /*property*/, sd_bus_message* reply, void* context,
                      sd_bus_error* /*error*/) {
    int result = sd_bus_message_open_container(reply, 'a', "s");
    for (const auto& item : static_cast<Watcher*>(context)->items_) {
        if (result >= 0)
            result = sd_bus_message_append(reply, "s", item.text().c_str());
    }
    return result < 0 ? result : sd_bus_message_close_container(reply);
}

int Watcher::getHasHost(sd_bus* /*bus*/, const char* /*path*/, const char* /*interface*/,
                        const char* /*property*/, sd_bus_message* reply, void* /*context*/,
                        sd_bus_error* /*error*/) {
    return sd_bus_message_append(reply, "b", 1);
}

int Watcher::getVersion(sd_bus* /*bus*/, const char* /*path*/, const char* /*interface*/,
                        const char* /*property*/, sd_bus_message* reply, void* /*context*/,
                        sd_bus_error* /*error*/) {
    return sd_bus_message_append(reply, "i", 0);
}

}  // namespace velmo::status_notifier
