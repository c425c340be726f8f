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

/// A usual screen, and one that has room for many items.
constexpr const char* usualScreen = "1920x1080x24";
constexpr const char* wideScreen = "7680x1080x24";
constexpr int wideScreenWidth = 7680;
/// Room for as many of both kinds.
constexpr const char* twiceAsWideScreen = "15360x1080x24";
/// Of all hosts that are measured, in pixels from the top of the screen.
constexpr int middleOfBar = 13;

/// How an item comes: as a window, or on the session's bus.
enum class Kind { tray, bus };
/// As in the result.
const char* nameOf(Kind kind);

/// What tells an item from others: its class, or its id.
std::string itemName(int number);

/// A display and a session bus of its own for one measurement.
class Display {
public:
    explicit Display(const std::string& screen = usualScreen);
    ~Display();
    Display(const Display&) = delete;
    Display& operator=(const Display&) = delete;

    const XObserver& x() const { return *observer_; }
    const std::filesystem::path& home() const { return home_; }
    /// What programs find in their environment to come here.
    const Environment& environment() const { return environment_; }
    ChildProcess run(const std::vector<std::string>& command) const { return {command, environment_}; }

    /// Some tray hosts wait for a window manager.
    void startWindowManager();
    bool hasTray() const { return x().selectionOwner("_NET_SYSTEM_TRAY_S0") != XCB_WINDOW_NONE; }
    /// A new icon, handed to the tray. Its title is its name, its class "Bench".
    xcb_window_t dock(int number);
    bool isDocked(xcb_window_t window) const;
    /// The same, and returns once it is in its place. One that a host has lost is handed over anew after two
    /// seconds.
    xcb_window_t dockAndWait(int number);
    /// The same of the first ones, all at once.
    std::vector<xcb_window_t> dockAllAndWait(int count);
    /// For programs that start afterwards; keys as in Velmo's defaults file. Not its first launch, which
    /// opens the settings.
    void writeDefaults(nlohmann::json values) const;
    /// Runs a command to its end.
    void xdotool(const std::vector<std::string>& arguments) const;
    /// How many squares in the colour of our items lie side by side across the middle of the bar.
    int squares() const;

private:
    xcb_window_t awaitDocked(int number, xcb_window_t window);

    std::filesystem::path home_;
    Environment environment_;
    std::optional<PrivateBus> bus_;
    std::optional<ChildProcess> server_;
    std::optional<ChildProcess> windowManager_;
    std::optional<XObserver> observer_;
};

}  // namespace velmo::desktop
