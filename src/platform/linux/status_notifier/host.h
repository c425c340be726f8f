#pragma once

#include "linux/dbus/bus.h"
#include "linux/icons/icon_loader.h"
#include "linux/status_notifier/foreign_watcher.h"
#include "linux/status_notifier/item.h"
#include "linux/status_notifier/watcher.h"

#include <functional>
#include <list>
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
        /// As it was registered, under whatever name.
        ItemAddress registered;
        std::string owner;
        std::unique_ptr<Item> item;
        bool isShown = false;
        Registration asking;
        Registration ownerChanges;
        Registration serviceChanges;
    };
    using Entries = std::list<Entry>;

    void add(const ItemAddress& address);
    /// Ends the newest entry of whoever has the most. False where that is the one who wants another.
    bool makeRoomFor(const std::string& service);
    void resolve(Entries::iterator entry);
    void resolved(Entries::iterator entry, const std::string& owner);
    void changed(Entries::iterator entry);
    void removeNamed(const ItemAddress& address);
    void remove(Entries::iterator entry);
    void withdraw(const ItemAddress& address);

    EventLoop& loop_;
    IconLoader& icons_;
    std::shared_ptr<dbus::Bus> bus_;
    IconLook look_;
    Handlers handlers_;
    Entries entries_;
    std::vector<std::unique_ptr<Watcher>> watchers_;
    std::vector<std::unique_ptr<ForeignWatcher>> foreignWatchers_;
};

}  // namespace velmo::status_notifier
