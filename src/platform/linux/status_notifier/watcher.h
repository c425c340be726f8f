#pragma once

#include "linux/dbus/bus.h"
#include "linux/status_notifier/item_address.h"

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>

namespace velmo::status_notifier {

/// The place where items register, and where hosts learn of them: for one family of names. It claims the
/// name on the bus and gets it as soon as nobody else has it.
class Watcher {
public:
    /// Of an item, and of the unique name of who registers it, which need not be the item's own program.
    using Handler = std::function<void(const ItemAddress& item, const std::string& registrant)>;

    /// `onRegistered` is told of an item that registers here.
    Watcher(std::shared_ptr<dbus::Bus> bus, const std::string& family, Handler onRegistered);
    ~Watcher();
    Watcher(const Watcher&) = delete;
    Watcher& operator=(const Watcher&) = delete;

    /// The item is there no longer.
    void withdraw(const ItemAddress& item);

private:
    struct Table;

    static int registerItem(sd_bus_message* message, void* context, sd_bus_error* error);
    static int registerHost(sd_bus_message* message, void* context, sd_bus_error* error);
    static int getItems(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply, void* context,
                        sd_bus_error*);
    static int getHasHost(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply,
                          void* context, sd_bus_error*);
    static int getVersion(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply,
                          void* context, sd_bus_error*);

    void emit(const std::string& member, const std::optional<std::string>& text = std::nullopt);

    std::shared_ptr<dbus::Bus> bus_;
    std::string name_;
    Handler onRegistered_;
    std::set<ItemAddress> items_;
    Registration object_;
    Registration claim_;
};

}  // namespace velmo::status_notifier
