#pragma once

#include "lifetime.h"
#include "linux/dbus/bus.h"
#include "linux/event_loop/event_loop.h"
#include "linux/event_loop/posted_once.h"
#include "linux/status_notifier/item.h"
#include "linux/status_notifier/menu_layout.h"
#include "linux/status_notifier/menu_pictures.h"
#include "linux/toolkit/exported_menu.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace velmo::status_notifier {

/// A program's exported menu, from the moment somebody wants it until it has closed.
class MenuClient : public ExportedMenu {
public:
    /// `iconSide` is in pixels. `time` is that of the click, as the display server has it.
    MenuClient(const Item& item, int iconSide, std::string iconTheme, std::uint32_t time);

    enum class Outcome {
        /// It can be shown.
        ready,
        /// The program has none, although it says so.
        refused,
        /// It has not come in time, or there is nothing in it.
        missing,
    };
    /// Asks for the menu. `onOutcome` is called once, in a turn of its own.
    void prepare(std::function<void(Outcome)> onOutcome);
    /// The program has gone.
    void end();

    const ExportedMenuEntry& root() const override { return layout_.root(); }
    bool hasEnded() const override { return ended_; }
    void setOnChange(std::function<void()> handler) override { onChange_ = std::move(handler); }
    void opened(std::int32_t id) override;
    void closed(std::int32_t id) override;
    void chosen(std::int32_t id, std::uint32_t time) override;

private:
    dbus::MethodCall call(const std::string& member, std::function<int(sd_bus_message*)> arguments) const;
    void sendEvent(std::int32_t id, const std::string& event, std::uint32_t time) const;
    void askAboutToShow(std::int32_t id);
    void listen();
    void requestLayout();
    void fetch();
    void fetched(const dbus::Answer& answer);
    /// It can be shown as soon as there is something in it.
    void contentChanged();
    void picturesCame();
    void applyChanges(sd_bus_message* message);
    /// The first outcome counts.
    void tell(Outcome outcome);

    EventLoop& loop_;
    std::shared_ptr<dbus::Bus> bus_;
    std::string service_;
    std::string path_;
    std::uint32_t time_;

    MenuLayout layout_;
    MenuPictures pictures_;
    bool isKnown_ = false;
    /// There has been something to show.
    bool isFilled_ = false;
    bool ended_ = false;
    /// The layout has changed since it was asked for.
    bool isStale_ = false;
    /// Entries whose properties may still change before the next pause.
    std::size_t changesLeft_;
    std::optional<Outcome> outcome_;
    std::function<void(Outcome)> onOutcome_;
    std::function<void()> onChange_;
    std::map<std::int32_t, Registration> showing_;
    Registration fetching_;
    std::shared_ptr<Timer> comingLimit_;
    std::shared_ptr<Timer> fetchTimer_;
    std::shared_ptr<Timer> changePause_;
    std::vector<Registration> signals_;
    PostedOnce changed_;
    PostedOnce told_;
    Lifetime lifetime_;
};

}  // namespace velmo::status_notifier
