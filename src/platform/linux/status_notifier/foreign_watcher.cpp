#include "foreign_watcher.h"

#include "linux/dbus/message_reader.h"
#include "linux/status_notifier/names.h"

#include <unistd.h>

#include <algorithm>
#include <utility>

namespace velmo::status_notifier {

namespace {

/// A watcher that is busy, as when the session begins, or has its name before its object, is asked again for
/// as long as it runs: more and more seldom.
constexpr Seconds firstListPause = 1;
constexpr Seconds longestListPause = 60;

/// What was said to an object that is not there yet was lost.
bool isAbsent(const std::string& error) {
    return error == SD_BUS_ERROR_UNKNOWN_OBJECT || error == SD_BUS_ERROR_UNKNOWN_INTERFACE ||
           error == SD_BUS_ERROR_UNKNOWN_METHOD;
}

}  // namespace

ForeignWatcher::ForeignWatcher(EventLoop& loop, std::shared_ptr<dbus::Bus> bus, const std::string& family,
                               Handler onItem, Handler onItemGone)
    : loop_(loop),
      bus_(std::move(bus)),
      name_(watcherName(family)),
      hostName_(hostName(family, getpid())),
      onItem_(std::move(onItem)),
      onItemGone_(std::move(onItemGone)) {
    ownerChanges_ = bus_->onOwnerChange(name_, [this](const auto& owner) { ownerChanged(owner); });
    askingForOwner_ = bus_->askForOwner(name_, [this](const auto& owner) {
        if (!owner.empty())
            ownerChanged(owner);
    });
}

void ForeignWatcher::ownerChanged(const std::string& owner) {
    if (owner == owner_)
        return;
    owner_ = owner;
    signals_.clear();
    listing_ = {};
    listPause_ = firstListPause;
    listTimer_.end();
    if (!owner_.empty() && owner_ != bus_->uniqueName())
        attend();
}

void ForeignWatcher::attend() {
    const std::string rule = "type='signal',sender='" + owner_ + "',path='" + watcherPath + "',interface='" +
                             name_ + "',member='StatusNotifierItem";
    signals_.push_back(
        bus_->onSignal(rule + "Registered'", [this](sd_bus_message* message) { told(message, onItem_); }));
    signals_.push_back(bus_->onSignal(rule + "Unregistered'",
                                      [this](sd_bus_message* message) { told(message, onItemGone_); }));
    // Watchers know hosts by a name of this form, and overlook others.
    bus_->send({dbus::daemonName, dbus::daemonPath, dbus::daemonName, "RequestName",
                [this](sd_bus_message* message) {
                    return sd_bus_message_append(message, "su", hostName_.c_str(), 0);
                }});
    introduce();
}

void ForeignWatcher::introduce() {
    bus_->send({owner_, watcherPath, name_, "RegisterStatusNotifierHost", [this](sd_bus_message* message) {
                    return sd_bus_message_append(message, "s", hostName_.c_str());
                }});
    askForItems();
}

void ForeignWatcher::askForItems() {
    const auto appendProperty = [this](sd_bus_message* message) {
        return sd_bus_message_append(message, "ss", name_.c_str(), "RegisteredStatusNotifierItems");
    };
    listing_ = bus_->call({owner_, watcherPath, propertiesInterface, "Get", appendProperty},
                          [this](const auto& answer) { listed(answer); });
}

void ForeignWatcher::listed(const dbus::Answer& answer) {
    if (!answer.message) {
        listTimer_ = loop_.schedule(listPause_, lifetime_.guard([this, isAbsent = isAbsent(answer.error)] {
            if (isAbsent)
                introduce();
            else
                askForItems();
        }));
        listPause_ = std::min(2 * listPause_, longestListPause);
        return;
    }
    readItems(answer.message, owner_, onItem_);
}

void ForeignWatcher::readItems(sd_bus_message* answer, const std::string& owner, const Handler& onItem) {
    dbus::MessageReader reader(answer);
    reader.variant([&] {
        reader.array([&] {
            if (const auto item = parseItemAddress(reader.text().value_or(""), owner))
                onItem(*item);
            return true;
        });
    });
}

void ForeignWatcher::told(sd_bus_message* message, const Handler& handler) const {
    dbus::MessageReader reader(message);
    if (const auto item = parseItemAddress(reader.text().value_or(""), owner_))
        handler(*item);
}

}  // namespace velmo::status_notifier
