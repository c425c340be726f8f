#pragma once

#include "bus_items.h"
#include "hosts.h"
#include "report.h"
#include "timing.h"

#include <exception>
#include <optional>
#include <string>
#include <vector>

namespace velmo::desktop {

/// A host on a display of its own, with a window manager.
class RunningHost {
public:
    explicit RunningHost(const Host& host, const Setup& setup = {}, const char* screen = usualScreen);

    const Host& host() const { return *host_; }
    Display& display() { return display_; }
    const Display& display() const { return display_; }
    pid_t process() const { return process_->id(); }

    /// Adds items up to this number of them. They get their places one after the other.
    void fillTray(int count);
    /// The same with those on the bus, all at once. Returns once those that are not hidden are seen.
    void fillBus(int count, int hidden = 0);
    void fill(Kind kind, int count, int hidden = 0);
    /// In the order in which they were docked.
    const std::vector<xcb_window_t>& trayIcons() const { return trayIcons_; }
    /// The program that has the items on the bus does nothing any more.
    void letBusItemsRest();

    /// Starts it once more, and waits until it has the tray. Returns when it was started.
    Clock::time_point restart();
    BusItems& busItems();

private:
    void start();

    const Host* host_;
    Display display_;
    std::optional<ChildProcess> process_;
    std::vector<xcb_window_t> trayIcons_;
    std::optional<BusItems> busItems_;
};

/// Waits until there is one.
xcb_window_t windowTitled(const Display& display, const std::string& title);

/// What the action of that host returns. A peer of which it fails is tried again, twice at most, which the
/// report tells; absent where that was in vain. What is ours has to succeed at once.
template <typename Action>
auto withPatience(Report& report, const std::string& name, const Action& action)
    -> std::optional<decltype(action())> {
    for (int attempt = 1;; ++attempt) {
        try {
            return action();
        } catch (const std::exception& error) {
            if (isVelmo(name))
                throw;
            if (attempt == 3) {
                report.leaveOut(name + " failed three times and is left out from then on: " + error.what());
                return std::nullopt;
            }
            report.note(name + " failed and was tried again: " + error.what());
        }
    }
}

}  // namespace velmo::desktop
