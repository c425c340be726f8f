#pragma once

#include "lifetime.h"
#include "linux/dbus/bus.h"
#include "linux/event_loop/event_loop.h"
#include "linux/event_loop/posted_once.h"
#include "linux/icons/icon_loader.h"
#include "linux/status_notifier/icon_look.h"
#include "linux/status_notifier/item_address.h"
#include "linux/status_notifier/item_properties.h"
#include "linux/status_notifier/picture_source.h"
#include "scoped_timer.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace velmo::status_notifier {

/// Another program's item on the bus, kept up to date. Nothing here waits for the program.
class Item {
public:
    struct Environment {
        EventLoop& loop;
        IconLoader& icons;
        std::shared_ptr<dbus::Bus> bus;
        /// How long the first question waits for its answer, and the next one for the first.
        Seconds patience = dbus::answerLimit;
    };

    /// `address` names the owner by its unique name.
    Item(const Environment& environment, ItemAddress address, IconLook look);
    Item(const Item&) = delete;
    Item& operator=(const Item&) = delete;

    const ItemAddress& address() const { return address_; }
    /// True once there is no such object any longer.
    bool isGone() const { return gone_; }
    /// Called when it has become ready or gone, and after each change in between. What is called may end the
    /// item.
    void setOnChange(std::function<void()> handler) { onChange_ = std::move(handler); }
    void setLook(const IconLook& look);
    /// The program has told of a change, or given another sign of life.
    void requestRefresh();

    const ItemProperties& properties() const { return properties_; }
    /// What to show at present: the icon, or the one for attention. It covers as many points as it has
    /// pixels.
    const std::optional<Image>& icon() const { return icon_.image(); }
    /// For the lower right corner.
    const std::optional<Image>& overlay() const { return overlay_.image(); }
    std::optional<std::int32_t> processIdentifier() const { return processIdentifier_; }
    const std::optional<std::string>& ownerName() const { return ownerName_; }
    const Environment& environment() const { return environment_; }

    /// Names the program and which of its items this is, the same at each of its starts.
    std::string application() const;

    /// The token by which the program may come to the front with what is asked next.
    void provideActivationToken(const std::string& token) const;
    /// Places are in pixels of the screen. `onRefused` is called where the program does not do that.
    void activate(int x, int y, std::function<void()> onRefused);
    void secondaryActivate(int x, int y) const;
    void contextMenu(int x, int y) const;
    /// In hundred-and-twentieths of a wheel's notch, up and left being positive.
    void scroll(int delta, bool isHorizontal) const;

private:
    std::string interface() const;
    void askForProcess();
    void listen();
    void refresh();
    void refreshed(const dbus::Answer& answer);
    void refused(const std::string& error);
    /// Of the present question and the pause after it: longer each time that nothing came of it.
    Seconds patience() const;
    bool isStuck() const;
    void showPictures();
    void settle();
    void become(bool& state);
    void send(const std::string& member, const std::function<int(sd_bus_message*)>& arguments) const;
    void sendPlace(const std::string& member, int x, int y) const;

    Environment environment_;
    ItemAddress address_;
    IconLook look_;
    std::size_t family_ = 0;
    bool familyIsKnown_ = false;
    ItemProperties properties_;
    bool propertiesAreKnown_ = false;
    bool processIsKnown_ = false;
    std::optional<std::int32_t> processIdentifier_;
    std::optional<std::string> ownerName_;
    PictureSource icon_;
    PictureSource overlay_;
    bool ready_ = false;
    bool gone_ = false;
    bool isAsking_ = false;
    /// Questions in a row that came to nothing, and those of them that nobody was there to answer.
    int failures_ = 0;
    int timesMissing_ = 0;
    std::chrono::steady_clock::time_point askedAt_;
    /// Its pictures are waited for before it is shown.
    bool awaitsPictures_ = true;
    /// The program has told of a change since it was asked.
    bool isStale_ = false;
    std::function<void()> onChange_;
    PostedOnce changed_;
    ScopedTimer refreshTimer_;
    ScopedTimer pictureTimer_;
    Registration refreshing_;
    Registration askingForProcess_;
    Registration activating_;
    Registration signals_;
    Lifetime lifetime_;
};

}  // namespace velmo::status_notifier
