#pragma once

#include "lifetime.h"
#include "linux/dbus/bus.h"
#include "linux/event_loop/event_loop.h"
#include "linux/status_notifier/item_address.h"
#include "scoped_timer.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace velmo::status_notifier {

/// Another program that plays the watcher, as a host sees it: for one family of names. It is followed when it
/// comes and goes.
class ForeignWatcher {
public:
    using Handler = std::function<void(const ItemAddress&)>;

    ForeignWatcher(EventLoop& loop, std::shared_ptr<dbus::Bus> bus, const std::string& family, Handler onItem,
                   Handler onItemGone);
    ForeignWatcher(const ForeignWatcher&) = delete;
    ForeignWatcher& operator=(const ForeignWatcher&) = delete;

    /// Tells of each item in a watcher's answer to the question for its list.
    static void readItems(sd_bus_message* answer, const std::string& owner, const Handler& onItem);

private:
    void ownerChanged(const std::string& owner);
    void attend();
    /// Registers us as a host, and asks for the items.
    void introduce();
    void askForItems();
    void listed(const dbus::Answer& answer);
    void told(sd_bus_message* message, const Handler& handler) const;

    EventLoop& loop_;
    std::shared_ptr<dbus::Bus> bus_;
    std::string name_;
    /// Ours as a host.
    std::string hostName_;
    Handler onItem_;
    Handler onItemGone_;
    /// Unique name of the program that is the watcher, empty while there is none.
    std::string owner_;
    Registration ownerChanges_;
    Registration askingForOwner_;
    Registration listing_;
    /// Before it is asked again for its items.
    Seconds listPause_ = 0;
    ScopedTimer listTimer_;
    std::vector<Registration> signals_;
    Lifetime lifetime_;
};

}  // namespace velmo::status_notifier
