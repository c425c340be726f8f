#include "item.h"

#include "linux/process/linux_process_info.h"
#include "linux/status_notifier/names.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <set>
#include <string_view>
#include <utility>

namespace velmo::status_notifier {

namespace {

/// Between an answer and the next question: a program that changes without end is looked at so often, and
/// less where its answers are large.
constexpr Seconds refreshPause = 0.03;
constexpr double bytesASecond = 4e6;
/// A program that has just started, or is busy, is asked again, as long as it runs.
constexpr Seconds mostPatience = 60;
/// An object that is missing so often will not come.
constexpr int mostTimesMissing = 3;
/// An item is shown without its picture where that takes longer.
constexpr Seconds pictureLimit = 1;
constexpr Seconds activationLimit = 2;
constexpr std::size_t longestIdentity = 128;

bool isMissingInterface(const std::string& error) {
    return error == SD_BUS_ERROR_UNKNOWN_INTERFACE || error == SD_BUS_ERROR_UNKNOWN_METHOD ||
           error == SD_BUS_ERROR_UNKNOWN_OBJECT || error == SD_BUS_ERROR_UNKNOWN_PROPERTY ||
           error == SD_BUS_ERROR_INVALID_ARGS;
}

bool isMissingOwner(const std::string& error) {
    return error == SD_BUS_ERROR_SERVICE_UNKNOWN || error == SD_BUS_ERROR_NAME_HAS_NO_OWNER ||
           error == SD_BUS_ERROR_DISCONNECTED;
}

/// Called for each signal of a flood.
bool tellsOfChange(sd_bus_message* signal) {
    static const std::set<std::string, std::less<>> interfaces = {itemInterface(families.front()),
                                                                  itemInterface(families.back())};
    return interfaces.contains(std::string_view(sd_bus_message_get_interface(signal))) ||
           sd_bus_message_is_signal(signal, propertiesInterface, "PropertiesChanged") > 0;
}

}  // namespace

Item::Item(const Environment& environment, ItemAddress address, IconLook look)
    : environment_(environment),
      address_(std::move(address)),
      look_(std::move(look)),
      icon_(environment.icons, [this] { settle(); }),
      overlay_(environment.icons, [this] { settle(); }),
      changed_(environment.loop, [this] {
          // A copy, because the item may end meanwhile.
          if (const auto handler = onChange_)
              handler();
      }) {
    listen();
    askForProcess();
    refresh();
}

std::string Item::interface() const {
    return itemInterface(families.at(family_));
}

void Item::askForProcess() {
    askingForProcess_ = environment_.bus->askAbout(
        address_.service, "GetConnectionUnixProcessID", [this](const auto& answer) {
            std::uint32_t number = 0;
            if (answer.message && sd_bus_message_read(answer.message, "u", &number) > 0) {
                processIdentifier_ = static_cast<std::int32_t>(number);
                ownerName_ = processName(*processIdentifier_);
            }
            processIsKnown_ = true;
            settle();
        });
}

void Item::listen() {
    // One rule for all: where hundreds of items come at once, it is rules that the bus is busy with.
    const std::string rule = "type='signal',sender='" + address_.service + "',path='" + address_.path + "'";
    signals_ = environment_.bus->onSignal(rule, [this](sd_bus_message* message) {
        if (tellsOfChange(message))
            requestRefresh();
    });
}

void Item::requestRefresh() {
    isStale_ = true;
    if (isStuck())
        refresh();
    else if (!refreshTimer_.isValid())
        refreshTimer_ = environment_.loop.schedule(0, lifetime_.guard([this] { refresh(); }));
}

/// Whoever gives a sign of life after a silence is asked anew, and not when its turn would come.
bool Item::isStuck() const {
    const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - askedAt_;
    return failures_ > 0 && !isAsking_ && passed.count() > environment_.patience;
}

Seconds Item::patience() const {
    return std::min(std::ldexp(environment_.patience, std::min(failures_, 10)), mostPatience);
}

void Item::refresh() {
    isStale_ = false;
    isAsking_ = true;
    askedAt_ = std::chrono::steady_clock::now();
    // Nothing is asked before this has come to an end.
    refreshTimer_ = environment_.loop.schedule(2 * patience(), [] {});
    const auto appendInterface = [this](sd_bus_message* message) {
        return sd_bus_message_append(message, "s", interface().c_str());
    };
    refreshing_ = environment_.bus->call(
        {address_.service, address_.path, propertiesInterface, "GetAll", appendInterface, patience()},
        [this](const auto& answer) { refreshed(answer); });
}

void Item::refreshed(const dbus::Answer& answer) {
    refreshTimer_.end();
    isAsking_ = false;
    if (!answer.message) {
        refused(answer.error);
        return;
    }
    auto properties = readItemProperties(answer.message, look_.side, look_.overlaySide);
    const bool isEmpty = properties.id.empty() && properties.icon.isEmpty() && properties.title.empty();
    // Some libraries know no properties of an interface that they do not have, and say so by silence.
    if (isEmpty && !familyIsKnown_ && family_ + 1 < families.size()) {
        refused(SD_BUS_ERROR_UNKNOWN_INTERFACE);
        return;
    }
    if (!isEmpty)
        familyIsKnown_ = true;
    else if (!familyIsKnown_)
        family_ = 0;
    failures_ = 0;
    timesMissing_ = 0;
    properties_ = std::move(properties);
    if (!std::exchange(propertiesAreKnown_, true)) {
        pictureTimer_ = environment_.loop.schedule(pictureLimit, lifetime_.guard([this] {
            awaitsPictures_ = false;
            settle();
        }));
    }
    showPictures();
    const Seconds pause = refreshPause + static_cast<double>(properties_.messageBytes) / bytesASecond;
    refreshTimer_ = environment_.loop.schedule(pause, lifetime_.guard([this] {
        if (isStale_)
            refresh();
    }));
    settle();
}

void Item::refused(const std::string& error) {
    if (isMissingOwner(error)) {
        become(gone_);
        return;
    }
    if (isMissingInterface(error) && !familyIsKnown_ && ++family_ < families.size()) {
        refresh();
        return;
    }
    if (!familyIsKnown_)
        family_ = 0;
    if (isMissingInterface(error) && ++timesMissing_ >= mostTimesMissing) {
        become(gone_);
        return;
    }
    const Seconds pause = isStale_ ? environment_.patience : patience();
    refreshTimer_ = environment_.loop.schedule(pause, lifetime_.guard([this] { refresh(); }));
    ++failures_;
}

void Item::showPictures() {
    const bool calls =
        properties_.status == ItemStatus::needsAttention && !properties_.attentionIcon.isEmpty();
    std::vector<ItemPicture> icons = {properties_.icon};
    if (calls)
        icons.insert(icons.begin(), properties_.attentionIcon);
    const auto request = [this](int side) {
        return IconRequest{side, {}, properties_.iconThemePath, look_.theme, {}, address_.service};
    };
    icon_.set(std::move(icons), request(look_.side));
    overlay_.set({properties_.overlayIcon}, request(look_.overlaySide));
}

void Item::setLook(const IconLook& look) {
    if (look == look_)
        return;
    look_ = look;
    requestRefresh();
}

void Item::settle() {
    if (ready_)
        changed_.request();
    else if (propertiesAreKnown_ && processIsKnown_ &&
             (!awaitsPictures_ || (icon_.isSettled() && overlay_.isSettled())))
        become(ready_);
}

void Item::become(bool& state) {
    if (!std::exchange(state, true))
        changed_.request();
}

std::string Item::application() const {
    std::string id = properties_.id;
    // Some programs append their process's number, which is another one at each start.
    const std::string number = processIdentifier_ ? std::to_string(*processIdentifier_) : std::string();
    if (const auto place = id.find(number); number.size() > 1 && place != std::string::npos)
        id.erase(place, number.size());
    std::string name = ownerName_.value_or("unknown") + (id.empty() ? "" : "." + id);
    name.resize(std::min(name.size(), longestIdentity));
    std::replace_if(
        name.begin(), name.end(), [](char character) { return character < ' ' || character > '~'; }, '?');
    return name;
}

void Item::send(const std::string& member, const std::function<int(sd_bus_message*)>& arguments) const {
    environment_.bus->send({address_.service, address_.path, interface(), member, arguments});
}

void Item::sendPlace(const std::string& member, int x, int y) const {
    send(member, [x, y](sd_bus_message* message) { return sd_bus_message_append(message, "ii", x, y); });
}

void Item::provideActivationToken(const std::string& token) const {
    send("ProvideXdgActivationToken",
         [&token](sd_bus_message* message) { return sd_bus_message_append(message, "s", token.c_str()); });
}

void Item::activate(int x, int y, std::function<void()> onRefused) {
    const auto appendPlace = [x, y](sd_bus_message* message) {
        return sd_bus_message_append(message, "ii", x, y);
    };
    activating_ = environment_.bus->call(
        {address_.service, address_.path, interface(), "Activate", appendPlace, activationLimit},
        [onRefused = std::move(onRefused)](const auto& answer) {
            if (!answer.message && !dbus::isSilence(answer.error) && !isMissingOwner(answer.error))
                onRefused();
        });
}

void Item::secondaryActivate(int x, int y) const {
    sendPlace("SecondaryActivate", x, y);
}

void Item::contextMenu(int x, int y) const {
    sendPlace("ContextMenu", x, y);
}

void Item::scroll(int delta, bool isHorizontal) const {
    send("Scroll", [delta, isHorizontal](sd_bus_message* message) {
        return sd_bus_message_append(message, "is", delta, isHorizontal ? "horizontal" : "vertical");
    });
}

}  // namespace velmo::status_notifier
