#include "host.h"

#include "linux/status_notifier/names.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <utility>

namespace velmo::status_notifier {

namespace {

/// More than anybody has; a program gone wild ends here.
constexpr std::size_t mostItems = 1000;

}  // namespace

Host::Host(EventLoop& loop, IconLoader& icons, std::shared_ptr<dbus::Bus> bus, IconLook look,
           Handlers handlers)
    : loop_(loop),
      icons_(icons),
      bus_(std::move(bus)),
      look_(std::move(look)),
      handlers_(std::move(handlers)) {
    const auto add = [this](const ItemAddress& address) { this->add(address); };
    const auto removeNamed = [this](const ItemAddress& address) { this->removeNamed(address); };
    for (const auto& family : families) {
        watchers_.push_back(std::make_unique<Watcher>(bus_, family, add));
        foreignWatchers_.push_back(std::make_unique<ForeignWatcher>(loop, bus_, family, add, removeNamed));
    }
}

Host::~Host() {
    while (!entries_.empty())
        remove(entries_.begin());
}

void Host::setLook(const IconLook& look) {
    look_ = look;
    for (const auto& entry : entries_) {
        if (entry.item)
            entry.item->setLook(look);
    }
}

void Host::add(const ItemAddress& address) {
    const auto known = std::find_if(entries_.begin(), entries_.end(),
                                    [&](const auto& entry) { return entry.registered == address; });
    if (known != entries_.end()) {
        if (known->item)
            known->item->requestRefresh();
        return;
    }
    if (entries_.size() >= mostItems && !makeRoomFor(address.service)) {
        withdraw(address);
        return;
    }
    const auto entry = entries_.emplace(entries_.end());
    entry->registered = address;
    if (address.service.starts_with(':'))
        resolved(entry, address.service);
    else
        resolve(entry);
}

bool Host::makeRoomFor(const std::string& service) {
    const auto ownerOf = [](const Entry& entry) {
        return entry.owner.empty() ? entry.registered.service : entry.owner;
    };
    std::map<std::string, std::size_t> counts;
    for (const auto& entry : entries_)
        ++counts[ownerOf(entry)];
    const auto most = std::max_element(counts.begin(), counts.end(), [](const auto& left, const auto& right) {
        return left.second < right.second;
    });
    if (most->second <= counts[service])
        return false;
    const auto newest = std::find_if(entries_.rbegin(), entries_.rend(),
                                     [&](const auto& entry) { return ownerOf(entry) == most->first; });
    remove(std::prev(newest.base()));
    return true;
}

void Host::resolve(Entries::iterator entry) {
    // Who gives up the name takes the item away, also where the program goes on.
    entry->serviceChanges = bus_->onOwnerChange(entry->registered.service, [this, entry](const auto& owner) {
        if (owner == entry->owner)
            return;
        if (entry->owner.empty())
            resolved(entry, owner);
        else
            remove(entry);
    });
    entry->asking = bus_->askForOwner(entry->registered.service,
                                      [this, entry](const auto& owner) { resolved(entry, owner); });
}

void Host::resolved(Entries::iterator entry, const std::string& owner) {
    if (owner.empty()) {
        remove(entry);
        return;
    }
    entry->asking = {};
    const auto isSame = [&](const Entry& other) {
        return &other != &*entry && other.owner == owner && other.registered.path == entry->registered.path;
    };
    // One item under two names is one item.
    if (std::any_of(entries_.begin(), entries_.end(), isSame)) {
        remove(entry);
        return;
    }
    entry->owner = owner;
    entry->ownerChanges = bus_->onOwnerChange(owner, [this, entry](const auto&) { remove(entry); });
    entry->item = std::make_unique<Item>(Item::Environment{loop_, icons_, bus_},
                                         ItemAddress{owner, entry->registered.path}, look_);
    entry->item->setOnChange([this, entry] { changed(entry); });
}

void Host::changed(Entries::iterator entry) {
    if (entry->item->isGone()) {
        remove(entry);
        return;
    }
    auto& handler = std::exchange(entry->isShown, true) ? handlers_.changed : handlers_.added;
    handler(*entry->item);
}

void Host::removeNamed(const ItemAddress& address) {
    const auto found = std::find_if(entries_.begin(), entries_.end(), [&](const auto& entry) {
        return entry.registered == address || ItemAddress{entry.owner, entry.registered.path} == address;
    });
    if (found != entries_.end())
        remove(found);
}

void Host::remove(Entries::iterator entry) {
    if (entry->isShown)
        handlers_.removed(*entry->item);
    withdraw(entry->registered);
    entries_.erase(entry);
}

void Host::withdraw(const ItemAddress& address) {
    for (const auto& watcher : watchers_)
        watcher->withdraw(address);
}

}  // namespace velmo::status_notifier
