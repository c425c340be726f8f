#include "color_scheme.h"

#include "linux/dbus/message_reader.h"

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
        if (answer.message)
            take(schemeInAnswer(answer.message));
    });
}

/// Anybody may claim to be the portal.
void ColorScheme::told(sd_bus_message* message) {
    const char* sender = sd_bus_message_get_sender(message);
    if (!sender || owner_ != sender)
        return;
    take(schemeInChange(message));
}

std::optional<std::int64_t> ColorScheme::schemeInAnswer(sd_bus_message* answer) {
    std::optional<std::int64_t> scheme;
    MessageReader reader(answer);
    reader.variant([&] { reader.variant([&] { scheme = reader.integer(); }); });
    return scheme;
}

std::optional<std::int64_t> ColorScheme::schemeInChange(sd_bus_message* signal) {
    std::optional<std::int64_t> scheme;
    MessageReader reader(signal);
    reader.skip();
    reader.skip();
    reader.variant([&] { scheme = reader.integer(); });
    return scheme;
}

void ColorScheme::take(std::optional<std::int64_t> scheme) const {
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
