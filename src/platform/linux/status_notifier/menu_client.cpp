#include "menu_client.h"

#include "linux/status_notifier/names.h"

#include <algorithm>
#include <utility>

namespace velmo::status_notifier {

namespace {

/// A program may prepare its menu before it is shown; one that does not answer is not waited for.
constexpr Seconds aboutToShowLimit = 0.5;
constexpr Seconds layoutLimit = 2;
constexpr Seconds fetchPause = 0.05;
/// The menu comes without the pictures that take longer.
constexpr Seconds iconLimit = 0.3;
constexpr std::size_t mostIcons = 200;
constexpr std::size_t mostAsked = 50;

bool hasEntryToShow(const ExportedMenuEntry& root) {
    return std::any_of(root.children.begin(), root.children.end(),
                       [](const auto& entry) { return entry.isVisible && !entry.isSeparator; });
}

}  // namespace

MenuClient::MenuClient(const Item& item, int iconSide, std::string iconTheme, std::uint32_t time)
    : loop_(item.environment().loop),
      icons_(item.environment().icons),
      bus_(item.environment().bus),
      service_(item.address().service),
      path_(item.properties().menuPath),
      iconFolder_(item.properties().iconThemePath),
      iconSide_(iconSide),
      iconTheme_(std::move(iconTheme)),
      time_(time),
      changed_(loop_,
               [this] {
                   if (const auto handler = onChange_)
                       handler();
               }),
      ready_(loop_, [this] {
          if (const auto handler = std::exchange(onReady_, nullptr))
              handler();
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
    signals_.push_back(bus_->onSignal(rule + "ItemsPropertiesUpdated'", [this](sd_bus_message* message) {
        if (!isKnown_ || !applyMenuChanges(message, layout_))
            return;
        loadIcons();
        changed_.request();
    }));
}

void MenuClient::prepare(std::function<void()> onReady) {
    onReady_ = std::move(onReady);
    auto aboutToShow =
        call("AboutToShow", [](sd_bus_message* message) { return sd_bus_message_append(message, "i", 0); });
    aboutToShow.limit = aboutToShowLimit;
    fetching_ = bus_->call(aboutToShow, [this](const auto&) { fetch(); });
}

void MenuClient::end() {
    ended_ = true;
    onReady_ = nullptr;
    changed_.request();
}

void MenuClient::requestLayout() {
    isStale_ = true;
    if (isKnown_ && (!fetchTimer_ || !fetchTimer_->isValid()))
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
    auto layout = answer.message ? readMenuLayout(answer.message) : std::nullopt;
    if (!layout)
        return;
    layout_ = std::move(*layout);
    loadIcons();
    changed_.request();
    if (std::exchange(isKnown_, true) || !hasEntryToShow(layout_.root))
        return;
    if (loading_.empty())
        becomeReady();
    else
        loop_.schedule(iconLimit, lifetime_.guard([this] { becomeReady(); }));
}

void MenuClient::becomeReady() {
    if (onReady_)
        ready_.request();
}

void MenuClient::loadIcons() {
    for (const auto& [id, icon] : layout_.icons)
        showIcon(id, icon);
}

void MenuClient::showIcon(std::int32_t id, const MenuIcon& icon) {
    auto* entry = layout_.find(id);
    if (!entry)
        return;
    const auto known = pictures_.find(icon);
    entry->icon = known == pictures_.end() ? std::nullopt : known->second;
    if (icon.isEmpty() || known != pictures_.end() || loading_.contains(icon) ||
        pictures_.size() >= mostIcons || loading_.size() >= mostIcons)
        return;
    IconRequest request{iconSide_, icon.name, iconFolder_, iconTheme_, icon.data, service_};
    loading_[icon] = icons_.load(request, [this, icon](const auto& picture) {
        pictures_[icon] = picture;
        loading_.erase(icon);
        for (const auto& [other, otherIcon] : layout_.icons) {
            if (pictures_.contains(otherIcon))
                showIcon(other, otherIcon);
        }
        changed_.request();
        if (loading_.empty())
            becomeReady();
    });
}

void MenuClient::opened(std::int32_t id) {
    sendEvent(id, "opened");
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
    sendEvent(id, "closed");
}

void MenuClient::chosen(std::int32_t id) {
    sendEvent(id, "clicked");
}

void MenuClient::sendEvent(std::int32_t id, const std::string& event) const {
    bus_->send(call("Event", [&, this](sd_bus_message* message) {
        return sd_bus_message_append(message, "isvu", id, event.c_str(), "i", 0, time_);
    }));
}

}  // namespace velmo::status_notifier
