#pragma once

#include "bus_program.h"
#include "desktop_session.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace velmo::desktop {

/// Milliseconds from one key to the next in `chooseByKeys`.
constexpr int keyPause = 60;

/// A display with Velmo and a session bus.
class SessionBusDesktop : public DesktopSession {
protected:
    void SetUp() override;

    /// Starts Velmo and waits until items can register with it.
    void startVelmoOnBus();
    /// The same for a bus that has just come.
    void awaitWatcher() const;
    /// The same, once it is on the screen.
    xcb_window_t untilShown(const std::string& title) const;
    /// A program on the bus with one item that has a title.
    std::unique_ptr<BusProgram> programWithItem(const std::string& title) const;

    /// A menu that Velmo has open: the lowest one where there are several.
    std::optional<Area> openMenu() const;
    /// Clicks the item and waits for its menu.
    void openMenuOf(xcb_window_t item, int button);
    void chooseByKeys(const std::vector<std::string>& keys) const;
    /// What a program has noted in its file, a line each.
    std::vector<std::string> notes() const;
    bool hasNoted(const std::string& line) const;
    std::string noteFile() const { return home_ / "notes"; }

    /// Milliseconds from a click on the toggle to its effect on the screen, for several clicks in a row. The
    /// burst runs beside them, in a thread of its own.
    std::vector<double> toggleLatencies(int clicks, const std::function<void()>& burst = nullptr) const;
    /// A tooltip that Velmo shows.
    std::optional<Area> openToolTip() const;
    /// Kilobytes of memory of Velmo's own.
    long memory();
    long openFiles();
    /// How often Velmo has gone to sleep so far.
    long sleeps();
};

}  // namespace velmo::desktop
