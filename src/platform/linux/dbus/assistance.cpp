#include "assistance.h"

#include "linux/dbus/message_reader.h"

#include <utility>

namespace velmo::dbus {

namespace {

constexpr const char* assistanceName = "org.a11y.Bus";
constexpr const char* assistancePath = "/org/a11y/bus";
constexpr const char* statusInterface = "org.a11y.Status";
constexpr const char* propertiesInterface = "org.freedesktop.DBus.Properties";
/// Between two questions: it may say without end that something has changed.
constexpr Seconds askingPause = 1;

}  // namespace

Assistance::Assistance(RunLoop& loop, std::shared_ptr<Bus> bus, std::function<void()> onStart)
    : bus_(std::move(bus)), onStart_(std::move(onStart)), asks_(loop, askingPause, [this] { ask(); }) {
    changes_ = bus_->onSignal(std::string("type='signal',path='") + assistancePath + "',interface='" +
                                  propertiesInterface + "',member='PropertiesChanged',arg0='" +
                                  statusInterface + "'",
                              [this](sd_bus_message* message) {
                                  const char* sender = sd_bus_message_get_sender(message);
                                  if (sender && owner_ == sender)
                                      asks_.request();
                              });
    ownerChanges_ = bus_->onOwnerChange(assistanceName, [this](const auto& owner) { ownerChanged(owner); });
    askingForOwner_ = bus_->askForOwner(assistanceName, [this](const auto& owner) { ownerChanged(owner); });
}

void Assistance::ownerChanged(const std::string& owner) {
    owner_ = owner;
    if (!owner.empty())
        asks_.request();
}

void Assistance::ask() {
    if (!onStart_ || owner_.empty())
        return;
    const MethodCall call = {.destination = owner_,
                             .path = assistancePath,
                             .interface = propertiesInterface,
                             .member = "GetAll",
                             .arguments = [](sd_bus_message* message) {
                                 return sd_bus_message_append(message, "s", statusInterface);
                             }};
    asking_ = bus_->call(call, [this](const Answer& answer) {
        if (answer.message)
            take(answer.message);
    });
}

bool Assistance::isOnBy(sd_bus_message* answer) {
    bool isOn = false;
    MessageReader reader(answer);
    reader.dictionary([&](const std::string& key) {
        if (key == "IsEnabled" || key == "ScreenReaderEnabled")
            isOn = reader.boolean().value_or(false) || isOn;
    });
    return isOn;
}

void Assistance::take(sd_bus_message* message) {
    if (!isOnBy(message))
        return;
    if (const auto onStart = std::exchange(onStart_, nullptr))
        onStart();
}

}  // namespace velmo::dbus
