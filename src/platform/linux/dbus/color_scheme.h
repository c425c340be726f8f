#pragma once

#include "linux/dbus/bus.h"
#include "linux/dbus/message_reader.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace velmo::dbus {

/// Whether the user prefers dark or light windows, as the desktop's portal on the session's bus tells. Nobody
/// is started for that.
class ColorScheme {
public:
    /// Absent where the user has no preference.
    using Handler = std::function<void(std::optional<bool> prefersDark)>;

    /// `onChange` is called with each answer, and whenever the portal tells of another preference.
    ColorScheme(std::shared_ptr<Bus> bus, Handler onChange);

private:
    void ownerChanged(const std::string& owner);
    void told(sd_bus_message* message);
    void take(MessageReader& reader);

    std::shared_ptr<Bus> bus_;
    Handler onChange_;
    /// Unique name, empty while there is no portal.
    std::string owner_;
    Registration ownerChanges_;
    Registration askingForOwner_;
    Registration reading_;
    Registration changes_;
};

}  // namespace velmo::dbus
