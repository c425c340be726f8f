#pragma once

#include "bus_program.h"
#include "desktop_session.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace velmo::desktop {

/// Milliseconds from one key to the next in `chooseByKeys`.
constexpr int keyPause = 60;
/// Of the item that `programWithItem` makes.
constexpr const char* itemPath = "/StatusNotifierItem";
constexpr const char* itemInterface = "org.kde.StatusNotifierItem";

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
    /// True where a program with that class of windows has a menu open by itself.
    bool hasMenu(const std::string& windowClass) const;
    void chooseByKeys(const std::vector<std::string>& keys) const;
    /// What a program has noted in its file, a line each.
    std::vector<std::string> notes() const;
    bool hasNoted(const std::string& line) const;
    std::string noteFile() const { return home_ / "notes"; }

    /// Milliseconds from a click on the toggle to its effect on the screen, for clicks in a row: an even
    /// number of them, at least `fewest`, and more for as long as the condition does not hold.
    std::vector<double> toggleLatencies(int fewest, const std::function<bool()>& isEnough) const;
    /// Lets the item of a program say that it has a menu, and waits until that is known.
    static void setMenuPath(BusProgram& program);
    /// A tooltip that Velmo shows.
    std::optional<Area> openToolTip() const;
    /// Kilobytes of memory of Velmo's own.
    long memory();
    /// Descriptors, while no settings are being written: the order of items is, some time after they have
    /// come.
    long openFiles();
    /// What the X server holds for Velmo: how many of each kind.
    std::map<std::string, std::uint32_t> resources() { return x().resources(velmo().id()); }
    /// How often Velmo has gone to sleep so far.
    long sleeps();
    /// Seconds of processors that Velmo has used so far.
    double processorTime();

private:
    bool isToolTip(xcb_window_t window) const;
};

}  // namespace velmo::desktop
