#pragma once

#include "lifetime.h"
#include "linux/dbus/bus.h"
#include "linux/event_loop/event_loop.h"
#include "linux/event_loop/posted_once.h"
#include "linux/icons/icon_loader.h"
#include "linux/status_notifier/item.h"
#include "linux/status_notifier/menu_layout.h"
#include "linux/toolkit/exported_menu.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace velmo::status_notifier {

/// A program's exported menu, from the moment somebody wants it until it has closed.
class MenuClient : public ExportedMenu {
public:
    /// `iconSide` is in pixels. `time` is that of the click, as the display server has it.
    MenuClient(const Item& item, int iconSide, std::string iconTheme, std::uint32_t time);

    /// Asks for the menu. `onReady` is called, in a turn of its own, once it can be shown; never where the
    /// program has not answered in time or has nothing to show.
    void prepare(std::function<void()> onReady);
    /// The program has gone.
    void end();

    const ExportedMenuEntry& root() const override { return layout_.root; }
    bool hasEnded() const override { return ended_; }
    void setOnChange(std::function<void()> handler) override { onChange_ = std::move(handler); }
    void opened(std::int32_t id) override;
    void closed(std::int32_t id) override;
    void chosen(std::int32_t id) override;

private:
    dbus::MethodCall call(const std::string& member, std::function<int(sd_bus_message*)> arguments) const;
    void sendEvent(std::int32_t id, const std::string& event) const;
    void askAboutToShow(std::int32_t id);
    void listen();
    void requestLayout();
    void fetch();
    void fetched(const dbus::Answer& answer);
    void loadIcons();
    void showIcon(std::int32_t id, const MenuIcon& icon);
    void becomeReady();

    EventLoop& loop_;
    IconLoader& icons_;
    std::shared_ptr<dbus::Bus> bus_;
    std::string service_;
    std::string path_;
    std::string iconFolder_;
    int iconSide_;
    std::string iconTheme_;
    std::uint32_t time_;

    MenuLayout layout_;
    bool isKnown_ = false;
    bool ended_ = false;
    /// The layout has changed since it was asked for.
    bool isStale_ = false;
    std::function<void()> onReady_;
    std::function<void()> onChange_;
    std::map<MenuIcon, std::optional<Image>> pictures_;
    std::map<MenuIcon, Registration> loading_;
    std::map<std::int32_t, Registration> showing_;
    Registration fetching_;
    std::shared_ptr<Timer> fetchTimer_;
    std::vector<Registration> signals_;
    PostedOnce changed_;
    PostedOnce ready_;
    Lifetime lifetime_;
};

}  // namespace velmo::status_notifier
