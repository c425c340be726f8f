#include "menu_client.h"

#include "linux/status_notifier/names.h"

#include <algorithm>
#include <utility>

namespace velmo::status_notifier {

namespace {

/// A program may prepare its menu before it is shown; one that does not answer is not waited for.
constexpr Seconds aboutToShowLimit = 0.5;
constexpr Seconds layoutLimit = 2;
/// Between changes of the whole menu.
constexpr Seconds fetchPause = 0.05;
/// The menu comes without the pictures that take longer.
constexpr Seconds iconLimit = 0.3;
constexpr std::size_t mostAsked = 50;

bool hasEntryToShow(const ExportedMenuEntry& root) {
    return std::any_of(root.children.begin(), root.children.end(),
                       [](const auto& entry) { return entry.isVisible && !entry.isSeparator; });
}

bool isMissing(const std::string& error) {
    return error == SD_BUS_ERROR_UNKNOWN_OBJECT || error == SD_BUS_ERROR_UNKNOWN_INTERFACE ||
           error == SD_BUS_ERROR_UNKNOWN_METHOD;
}

}  // namespace

MenuClient::MenuClient(const Item& item, int iconSide, std::string iconTheme, std::uint32_t time)
    : loop_(item.environment().loop),
      bus_(item.environment().bus),
      service_(item.address().service),
      path_(item.properties().menuPath),
      time_(time),
      pictures_(item.environment().icons,
                {iconSide, {}, item.properties().iconThemePath, std::move(iconTheme), {}, service_}, layout_,
                [this] { picturesCame(); }),
      changesLeft_(mostMenuEntries),
      changed_(loop_,
               [this] {
                   if (const auto handler = onChange_)
                       handler();
               }),
      told_(loop_, [this] {
          if (const auto handler = std::exchange(onOutcome_, nullptr))
              handler(*outcome_);
      }) {
    listen();
}

dbus::MethodCall MenuClient::call(const std::string& member,
                                  std::function<int(sd_bus_message*)> arguments) const {
    return {service_, path_, menuInterface, member, std::move(arguments)};
}

void MenuClient::listen() {
    const std::string rule = "type='signal',sender='" + service_ + "',path='" + path_ + "',interface='" +
                             menuInterface + "',member='";
    signals_.push_back(bus_->onSignal(rule + "LayoutUpdated'", [this](sd_bus_message*) { requestLayout(); }));
    signals_.push_back(bus_->onSignal(rule + "ItemsPropertiesUpdated'",
                                      [this](sd_bus_message* message) { applyChanges(message); }));
}

void MenuClient::prepare(std::function<void(Outcome)> onOutcome) {
    onOutcome_ = std::move(onOutcome);
    comingLimit_ =
        loop_.schedule(aboutToShowLimit + layoutLimit, lifetime_.guard([this] { tell(Outcome::missing); }));
    auto aboutToShow =
        call("AboutToShow", [](sd_bus_message* message) { return sd_bus_message_append(message, "i", 0); });
    aboutToShow.limit = aboutToShowLimit;
    fetching_ = bus_->call(aboutToShow, [this](const auto&) { fetch(); });
}

void MenuClient::tell(Outcome outcome) {
    if (outcome_)
        return;
    outcome_ = outcome;
    comingLimit_->invalidate();
    told_.request();
}

void MenuClient::end() {
    ended_ = true;
    onOutcome_ = nullptr;
    changed_.request();
}

void MenuClient::requestLayout() {
    isStale_ = true;
    // Not before it was asked for the first time.
    if (fetchTimer_ && !fetchTimer_->isValid())
        fetchTimer_ = loop_.schedule(0, lifetime_.guard([this] { fetch(); }));
}

void MenuClient::fetch() {
    isStale_ = false;
    // Nothing is asked before this has come to an end.
    fetchTimer_ = loop_.schedule(2 * layoutLimit, [] {});
    auto getLayout = call("GetLayout", [](sd_bus_message* message) {
        return sd_bus_message_append(message, "iias", 0, -1, 0);
    });
    getLayout.limit = layoutLimit;
    fetching_ = bus_->call(getLayout, [this](const auto& answer) { fetched(answer); });
}

void MenuClient::fetched(const dbus::Answer& answer) {
    fetchTimer_->invalidate();
    fetchTimer_ = loop_.schedule(fetchPause, lifetime_.guard([this] {
        if (isStale_)
            fetch();
    }));
    if (isMissing(answer.error))
        tell(Outcome::refused);
    auto layout = answer.message ? readMenuLayout(answer.message) : std::nullopt;
    if (!layout)
        return;
    isKnown_ = true;
    pictures_.replaceLayout(std::move(*layout));
    contentChanged();
}

void MenuClient::contentChanged() {
    changed_.request();
    if (isFilled_ || !hasEntryToShow(layout_.root()))
        return;
    isFilled_ = true;
    comingLimit_->invalidate();
    if (pictures_.areLoading())
        comingLimit_ = loop_.schedule(iconLimit, lifetime_.guard([this] { tell(Outcome::ready); }));
    else
        tell(Outcome::ready);
}

void MenuClient::picturesCame() {
    changed_.request();
    if (isFilled_ && !pictures_.areLoading())
        tell(Outcome::ready);
}

void MenuClient::applyChanges(sd_bus_message* message) {
    if (!isKnown_)
        return;
    const auto changes = applyMenuChanges(message, layout_, changesLeft_);
    changesLeft_ -= changes.count;
    if (!changePause_ || !changePause_->isValid())
        changePause_ =
            loop_.schedule(fetchPause, lifetime_.guard([this] { changesLeft_ = mostMenuEntries; }));
    // What is too much is left to the next layout.
    if (!changes.isComplete)
        requestLayout();
    for (const auto id : changes.entries)
        pictures_.follow(id);
    if (!changes.entries.empty())
        contentChanged();
}

void MenuClient::opened(std::int32_t id) {
    sendEvent(id, "opened", time_);
    if (id != 0)
        askAboutToShow(id);
    // Submenus that are filled only when somebody wants them.
    const auto* menu = layout_.find(id);
    std::size_t asked = 0;
    for (std::size_t index = 0; menu && index < menu->children.size(); ++index) {
        const auto& child = menu->children[index];
        if (child.isSubmenu && child.children.empty() && asked++ < mostAsked)
            askAboutToShow(child.id);
    }
}

void MenuClient::askAboutToShow(std::int32_t id) {
    const auto appendId = [id](sd_bus_message* message) { return sd_bus_message_append(message, "i", id); };
    showing_[id] = bus_->call(call("AboutToShow", appendId), [this](const auto& answer) {
        int needsUpdate = 0;
        if (answer.message && sd_bus_message_read(answer.message, "b", &needsUpdate) > 0 && needsUpdate)
            requestLayout();
    });
}

void MenuClient::closed(std::int32_t id) {
    sendEvent(id, "closed", time_);
}

void MenuClient::chosen(std::int32_t id, std::uint32_t time) {
    sendEvent(id, "clicked", time == 0 ? time_ : time);
}

void MenuClient::sendEvent(std::int32_t id, const std::string& event, std::uint32_t time) const {
    bus_->send(call("Event", [&](sd_bus_message* message) {
        return sd_bus_message_append(message, "isvu", id, event.c_str(), "i", 0, time);
    }));
}

}  // namespace velmo::status_notifier
