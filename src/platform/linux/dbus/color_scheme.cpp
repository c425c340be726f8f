#include "color_scheme.h"

#include <utility>

namespace velmo::dbus {

namespace {

constexpr const char* portalName = "org.freedesktop.portal.Desktop";
constexpr const char* portalPath = "/org/freedesktop/portal/desktop";
constexpr const char* settingsInterface = "org.freedesktop.portal.Settings";
constexpr const char* appearanceSettings = "org.freedesktop.appearance";
constexpr const char* schemeSetting = "color-scheme";

constexpr std::int64_t darkScheme = 1;
constexpr std::int64_t lightScheme = 2;

}  // namespace

ColorScheme::ColorScheme(std::shared_ptr<Bus> bus, Handler onChange)
    : bus_(std::move(bus)), onChange_(std::move(onChange)) {
    changes_ = bus_->onSignal(std::string("type='signal',path='") + portalPath + "',interface='" +
                                  settingsInterface + "',member='SettingChanged',arg0='" +
                                  appearanceSettings + "',arg1='" + schemeSetting + "'",
                              [this](sd_bus_message* message) { told(message); });
    ownerChanges_ = bus_->onOwnerChange(portalName, [this](const auto& owner) { ownerChanged(owner); });
    askingForOwner_ = bus_->askForOwner(portalName, [this](const auto& owner) { ownerChanged(owner); });
}

void ColorScheme::ownerChanged(const std::string& owner) {
    owner_ = owner;
    // One that goes leaves the user's preference what it was.
    if (owner.empty())
        return;
    const auto arguments = [](sd_bus_message* message) {
        return sd_bus_message_append(message, "ss", appearanceSettings, schemeSetting);
    };
    const MethodCall call = {.destination = owner,
                             .path = portalPath,
                             .interface = settingsInterface,
                             .member = "Read",
                             .arguments = arguments};
    reading_ = bus_->call(call, [this](const Answer& answer) {
        if (!answer.message)
            return;
        MessageReader reader(answer.message);
        reader.variant([&] { take(reader); });
    });
}

/// Anybody may claim to be the portal.
void ColorScheme::told(sd_bus_message* message) {
    const char* sender = sd_bus_message_get_sender(message);
    if (!sender || owner_ != sender)
        return;
    MessageReader reader(message);
    reader.skip();
    reader.skip();
    take(reader);
}

void ColorScheme::take(MessageReader& reader) {
    std::optional<std::int64_t> scheme;
    reader.variant([&] { scheme = reader.integer(); });
    if (!scheme)
        return;
    std::optional<bool> dark;
    if (*scheme == darkScheme)
        dark = true;
    else if (*scheme == lightScheme)
        dark = false;
    onChange_(dark);
}

}  // namespace velmo::dbus
