#include "host.h"

#include "linux/status_notifier/names.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace velmo::status_notifier {

namespace {

/// More than anybody has; a program gone wild ends here.
constexpr std::size_t mostItems = 1000;
/// What a program may well have, and loses to nobody. Where no program has more, whoever comes last goes
/// without: a program that fills the host from many connections does not push out those that were there.
constexpr std::size_t fairShare = 20;
/// Each looks at all items.
constexpr int mostAttempts = 100;

bool contains(const std::vector<std::string>& names, const std::string& name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

/// Empty for nobody.
std::string_view whoAnswers(const std::vector<std::string>& registrants) {
    return registrants.empty() ? std::string_view() : registrants.front();
}

}  // namespace

Host::Host(EventLoop& loop, IconLoader& icons, std::shared_ptr<dbus::Bus> bus, IconLook look,
           Handlers handlers)
    : loop_(loop),
      icons_(icons),
      bus_(std::move(bus)),
      look_(std::move(look)),
      handlers_(std::move(handlers)) {
    const auto add = [this](const ItemAddress& address, const std::string& registrant) {
        this->add(address, registrant);
    };
    const auto addNamed = [this](const ItemAddress& address) { this->add(address, address.service); };
    const auto removeNamed = [this](const ItemAddress& address) { this->removeNamed(address); };
    for (const auto& family : families) {
        watchers_.push_back(std::make_unique<Watcher>(bus_, family, add));
        foreignWatchers_.push_back(
            std::make_unique<ForeignWatcher>(loop, bus_, family, addNamed, removeNamed));
    }
}

Host::~Host() {
    while (!entries_.empty())
        remove(entries_.begin());
}

void Host::setLook(const IconLook& look) {
    look_ = look;
    for (const auto& [address, entry] : entries_) {
        if (entry.item)
            entry.item->setLook(look);
    }
}

void Host::add(const ItemAddress& address, const std::string& registrant) {
    if (const auto known = entries_.find(address); known != entries_.end()) {
        addAgain(known, registrant);
        return;
    }
    if (entries_.size() >= mostItems && !makeRoomFor(registrant)) {
        withdraw(address);
        return;
    }
    const auto entry = entries_.try_emplace(address).first;
    entry->second.number = ++numbers_;
    entry->second.registrants = {registrant};
    if (address.service.starts_with(':'))
        resolved(entry, address.service);
    else
        resolve(entry);
}

void Host::addAgain(Entries::iterator entry, const std::string& registrant) {
    auto& [address, state] = *entry;
    if (state.owner.empty()) {
        if (!contains(state.registrants, registrant))
            state.registrants.push_back(registrant);
    } else if (registrant == state.owner || registrant == address.service) {
        state.registrants = {state.owner};
    }
    if (state.item)
        state.item->requestRefresh();
}

bool Host::isOwn(const Entries::value_type& entry, const std::string& owner) {
    const auto& [address, state] = entry;
    return contains(state.registrants, owner) || contains(state.registrants, address.service);
}

void Host::follow(const std::string& registrant) {
    if (registrants_.contains(registrant))
        return;
    auto& presence = registrants_[registrant];
    presence.changes =
        bus_->onOwnerChange(registrant, [this, registrant](const auto&) { forget(registrant); });
    // It may have gone before anybody listened.
    presence.asking = bus_->askForOwner(registrant, [this, registrant](const auto& owner) {
        if (owner.empty())
            forget(registrant);
    });
}

void Host::forget(const std::string& registrant) {
    for (auto& [address, entry] : entries_)
        std::erase(entry.registrants, registrant);
    registrants_.erase(registrant);
}

bool Host::makeRoomFor(const std::string& registrant) {
    std::map<std::string, std::size_t, std::less<>> counts;
    for (const auto& [address, state] : entries_)
        ++counts[std::string(whoAnswers(state.registrants))];
    // What has been passed on by then stays so: many that have registered the same do not hold up the bar.
    for (auto attempts = mostAttempts; attempts > 0; --attempts) {
        const auto greatest =
            std::max_element(counts.begin(), counts.end(),
                             [](const auto& left, const auto& right) { return left.second < right.second; });
        if (greatest->second <= std::max(counts[registrant], fairShare))
            return false;
        auto newest = entries_.end();
        for (auto entry = entries_.begin(); entry != entries_.end(); ++entry) {
            if (whoAnswers(entry->second.registrants) == greatest->first &&
                (newest == entries_.end() || newest->second.number < entry->second.number))
                newest = entry;
        }
        auto& registrants = newest->second.registrants;
        if (registrants.size() < 2) {
            remove(newest);
            return true;
        }
        // Another one has registered it, too, who may be its own program.
        registrants.erase(registrants.begin());
        --greatest->second;
        ++counts[registrants.front()];
    }
    return false;
}

void Host::resolve(Entries::iterator entry) {
    auto& [address, state] = *entry;
    // Who gives up the name takes the item away, also where the program goes on.
    state.serviceChanges = bus_->onOwnerChange(address.service, [this, entry](const auto& owner) {
        if (owner == entry->second.owner)
            return;
        if (entry->second.owner.empty())
            resolved(entry, owner);
        else
            remove(entry);
    });
    state.asking =
        bus_->askForOwner(address.service, [this, entry](const auto& owner) { resolved(entry, owner); });
}

void Host::resolved(Entries::iterator entry, const std::string& owner) {
    auto& [address, state] = *entry;
    const ItemAddress location{owner, address.path};
    if (owner.empty()) {
        remove(entry);
        return;
    }
    const bool isItsOwn = isOwn(*entry, owner);
    if (const auto known = located_.find(location); known != located_.end()) {
        // One item under two names is one item. It goes with its name: with one that its own program gave it,
        // where there is one.
        if (!isItsOwn || isOwn(*known->second, owner)) {
            remove(entry);
            return;
        }
        remove(known->second);
    }
    located_.emplace(location, entry);
    state.asking = {};
    state.owner = owner;
    if (isItsOwn) {
        state.registrants = {owner};
    } else if (!state.registrants.empty()) {
        state.registrants.resize(1);
        follow(state.registrants.front());
    }
    if (!ownerChanges_.contains(owner))
        ownerChanges_[owner] = bus_->onOwnerChange(owner, [this, owner](const auto&) { removeAllOf(owner); });
    state.item = std::make_unique<Item>(Item::Environment{loop_, icons_, bus_}, location, look_);
    state.item->setOnChange([this, entry] { changed(entry); });
}

void Host::changed(Entries::iterator entry) {
    auto& state = entry->second;
    if (state.item->isGone()) {
        remove(entry);
        return;
    }
    auto& handler = std::exchange(state.isShown, true) ? handlers_.changed : handlers_.added;
    handler(*state.item);
}

void Host::removeNamed(const ItemAddress& address) {
    if (const auto found = entries_.find(address); found != entries_.end())
        remove(found);
    else if (const auto located = located_.find(address); located != located_.end())
        remove(located->second);
}

void Host::removeAllOf(const std::string& owner) {
    for (auto item = firstOf(owner); item != located_.end(); item = firstOf(owner))
        remove(item->second);
}

std::map<ItemAddress, Host::Entries::iterator>::iterator Host::firstOf(const std::string& owner) {
    const auto first = located_.lower_bound({owner, {}});
    return first != located_.end() && first->first.service == owner ? first : located_.end();
}

void Host::remove(Entries::iterator entry) {
    const auto& [address, state] = *entry;
    if (state.isShown)
        handlers_.removed(*state.item);
    if (!state.owner.empty()) {
        located_.erase({state.owner, address.path});
        if (firstOf(state.owner) == located_.end())
            ownerChanges_.erase(state.owner);
    }
    withdraw(address);
    entries_.erase(entry);
}

void Host::withdraw(const ItemAddress& address) {
    for (const auto& watcher : watchers_)
        watcher->withdraw(address);
}

}  // namespace velmo::status_notifier
