#pragma once

#include "linux/dbus/bus.h"
#include "linux/icons/icon_loader.h"
#include "linux/status_notifier/foreign_watcher.h"
#include "linux/status_notifier/item.h"
#include "linux/status_notifier/watcher.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace velmo::status_notifier {

/// All items on one bus, whichever watcher they have registered with: ourselves, where nobody else is one.
class Host {
public:
    struct Handlers {
        /// An item can be shown.
        std::function<void(Item&)> added;
        /// What it tells of itself, or what there is to show, has changed.
        std::function<void(Item&)> changed;
        /// Before it ends.
        std::function<void(Item&)> removed;
    };

    Host(EventLoop& loop, IconLoader& icons, std::shared_ptr<dbus::Bus> bus, IconLook look,
         Handlers handlers);
    ~Host();
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    void setLook(const IconLook& look);

private:
    struct Entry {
        /// Those that came later have greater ones.
        std::uint64_t number = 0;
        /// Who has registered it, by unique names (another watcher's by what it told), as anybody can name
        /// another's service: the first answers for it. It is the owner once that one has; more than one only
        /// while the owner is not known; none once that one has gone.
        std::vector<std::string> registrants;
        std::string owner;
        std::unique_ptr<Item> item;
        bool isShown = false;
        Registration asking;
        Registration serviceChanges;
    };
    /// By the address that was registered, under whatever name.
    using Entries = std::map<ItemAddress, Entry>;

    struct Presence {
        Registration asking;
        Registration changes;
    };

    void add(const ItemAddress& address, const std::string& registrant);
    void addAgain(Entries::iterator entry, const std::string& registrant);
    /// Whether its own program has registered it, or another watcher told of it, which does not tell who has.
    static bool isOwn(const Entries::value_type& entry, const std::string& owner);
    /// Once a registrant has gone, nobody answers for what it has registered of others.
    void follow(const std::string& registrant);
    void forget(const std::string& registrant);
    /// Ends the newest entry of those who answer for the most, and of nobody's where these are the most.
    /// False where the one who wants another has as many, or nobody has more than a fair share.
    bool makeRoomFor(const std::string& registrant);
    void resolve(Entries::iterator entry);
    void resolved(Entries::iterator entry, const std::string& owner);
    void changed(Entries::iterator entry);
    void removeNamed(const ItemAddress& address);
    void removeAllOf(const std::string& owner);
    /// The first of an owner's items, or the end.
    std::map<ItemAddress, Entries::iterator>::iterator firstOf(const std::string& owner);
    void remove(Entries::iterator entry);
    void withdraw(const ItemAddress& address);

    EventLoop& loop_;
    IconLoader& icons_;
    std::shared_ptr<dbus::Bus> bus_;
    IconLook look_;
    Handlers handlers_;
    Entries entries_;
    /// By the owner's unique name and the path, those whose owners are known.
    std::map<ItemAddress, Entries::iterator> located_;
    /// One for all items of an owner.
    std::map<std::string, Registration> ownerChanges_;
    /// Of those that have registered other programs' items.
    std::map<std::string, Presence> registrants_;
    std::uint64_t numbers_ = 0;
    std::vector<std::unique_ptr<Watcher>> watchers_;
    std::vector<std::unique_ptr<ForeignWatcher>> foreignWatchers_;
};

}  // namespace velmo::status_notifier
