#pragma once

#include "linux/dbus/bus.h"
#include "linux/event_loop/paced_work.h"

#include <functional>
#include <memory>
#include <string>

namespace velmo::dbus {

/// Whether the session says that assistive programs are at work. Nobody is started for that.
class Assistance {
public:
    /// `onStart` is called once, when the session says so first.
    Assistance(RunLoop& loop, std::shared_ptr<Bus> bus, std::function<void()> onStart);

    /// True where the answer to a question for all properties says so.
    static bool isOnBy(sd_bus_message* answer);

private:
    void ownerChanged(const std::string& owner);
    void ask();
    void take(sd_bus_message* message);

    std::shared_ptr<Bus> bus_;
    std::function<void()> onStart_;
    /// Unique name, empty while nobody knows.
    std::string owner_;
    PacedWork asks_;
    Registration ownerChanges_;
    Registration askingForOwner_;
    Registration asking_;
    Registration changes_;
};

}  // namespace velmo::dbus
