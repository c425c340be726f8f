#include "notifier_tray.h"

#include "linux/process/beside_program.h"

namespace velmo::x11 {

NotifierTray::NotifierTray(MenuBar& bar)
    : bar_(bar),
      icons_(bar.connection().loop(), findBesideProgram("velmo-icon-loader")),
      bus_(
          bar.connection().loop(), [this](const auto& sessionBus) { busCame(sessionBus); },
          [this] { host_ = nullptr; }),
      appearanceChanges_(bar.settings().onChange([this] {
          if (host_)
              host_->setLook(look());
      })) {}

void NotifierTray::start() {
    bus_.start(dbus::sessionBusAddress());
}

status_notifier::IconLook NotifierTray::look() const {
    const auto& appearance = bar_.appearance();
    return {appearance.pixels(bar_metrics::trayIconSide), appearance.pixels(bar_metrics::trayIconSide / 2),
            appearance.iconTheme};
}

void NotifierTray::busCame(const std::shared_ptr<dbus::Bus>& bus) {
    status_notifier::Host::Handlers handlers;
    handlers.added = [this](auto& item) { add(item); };
    handlers.changed = [this](auto& item) { follow(item); };
    handlers.removed = [this](auto& item) { remove(item); };
    host_ = std::make_unique<status_notifier::Host>(bar_.connection().loop(), icons_, bus, look(),
                                                    std::move(handlers));
    if (onBus_)
        onBus_(bus);
}

void NotifierTray::add(status_notifier::Item& item) {
    shown_[&item] = std::make_unique<NotifierIcon>(bar_, item);
}

void NotifierTray::follow(const status_notifier::Item& item) {
    shown_.at(&item)->follow();
}

void NotifierTray::remove(const status_notifier::Item& item) {
    shown_.erase(&item);
}

}  // namespace velmo::x11
