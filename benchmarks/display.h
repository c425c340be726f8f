#pragma once

#include "child_process.h"
#include "private_bus.h"
#include "x_observer.h"

#include <filesystem>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

namespace velmo::desktop {

/// A display and a session bus of its own for one measurement.
class Display {
public:
    explicit Display(const std::string& screen = "1920x1080x24");
    ~Display();
    Display(const Display&) = delete;
    Display& operator=(const Display&) = delete;

    XObserver& x() { return *observer_; }
    const std::filesystem::path& home() const { return home_; }
    /// What programs find in their environment to come here.
    const Environment& environment() const { return environment_; }
    ChildProcess run(const std::vector<std::string>& command) const { return {command, environment_}; }

    /// Some tray hosts wait for a window manager.
    void startWindowManager();
    bool hasTray() { return x().selectionOwner("_NET_SYSTEM_TRAY_S0") != XCB_WINDOW_NONE; }
    /// A new icon, handed to the tray. Its title is "bench" and the number, its class "Bench".
    xcb_window_t dock(int number);
    bool isDocked(xcb_window_t window);
    /// The same, and returns once it is in its place. One that a host has lost is handed over anew after two
    /// seconds.
    xcb_window_t dockAndWait(int number);
    /// For programs that start afterwards; keys as in Velmo's defaults file. Not its first launch, which
    /// opens the settings.
    void writeDefaults(nlohmann::json values) const;

    struct HiddenIcons {
        ChildProcess velmo;
        /// From right to left.
        std::vector<xcb_window_t> icons;
    };
    /// Starts Velmo with as many icons left of its divider, and returns when all are docked.
    HiddenIcons startVelmoWithHiddenIcons(int count, nlohmann::json defaults);

private:
    std::filesystem::path home_;
    Environment environment_;
    std::optional<PrivateBus> bus_;
    std::optional<ChildProcess> server_;
    std::optional<ChildProcess> windowManager_;
    std::optional<XObserver> observer_;
};

}  // namespace velmo::desktop
