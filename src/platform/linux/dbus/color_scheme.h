#pragma once

#include "linux/dbus/bus.h"

#include <cstdint>
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

    /// The number that stands for a scheme, in an answer of the portal and in what it tells of a change.
    /// Absent where there is none.
    static std::optional<std::int64_t> schemeInAnswer(sd_bus_message* answer);
    static std::optional<std::int64_t> schemeInChange(sd_bus_message* signal);

private:
    void ownerChanged(const std::string& owner);
    void told(sd_bus_message* message);
    void take(std::optional<std::int64_t> scheme) const;

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
