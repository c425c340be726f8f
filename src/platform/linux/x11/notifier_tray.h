#pragma once

#include "linux/dbus/session_bus.h"
#include "linux/icons/icon_loader.h"
#include "linux/status_notifier/host.h"
#include "linux/x11/menu_bar.h"
#include "linux/x11/notifier_icon.h"

#include <functional>
#include <map>
#include <memory>
#include <utility>

namespace velmo::x11 {

/// The items that programs have on the session's bus, as far as there is one.
class NotifierTray {
public:
    explicit NotifierTray(MenuBar& bar);

    /// Called with each bus that the session gets. Before the start.
    void setOnBus(std::function<void(const std::shared_ptr<dbus::Bus>&)> handler) {
        onBus_ = std::move(handler);
    }
    void start();
    /// Null while the session has none.
    const std::shared_ptr<dbus::Bus>& bus() const { return bus_.bus(); }

private:
    status_notifier::IconLook look() const;
    void busCame(const std::shared_ptr<dbus::Bus>& bus);
    void add(status_notifier::Item& item);
    void follow(const status_notifier::Item& item);
    void remove(const status_notifier::Item& item);

    MenuBar& bar_;
    IconLoader icons_;
    std::function<void(const std::shared_ptr<dbus::Bus>&)> onBus_;
    std::map<const status_notifier::Item*, std::unique_ptr<NotifierIcon>> shown_;
    std::unique_ptr<status_notifier::Host> host_;
    dbus::SessionBus bus_;
    Registration appearanceChanges_;
};

}  // namespace velmo::x11
