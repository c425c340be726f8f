#pragma once

#include "child_process.h"
#include "private_bus.h"
#include "x_observer.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

namespace velmo::desktop {

using std::chrono::milliseconds;

/// Points from the screen's left edge: farther left than any icon, yet in the bar.
constexpr int farLeft = 300;
/// The bar's background in both looks.
constexpr std::uint32_t lightBar = 0xf6f6f8;
constexpr std::uint32_t darkBar = 0x242427;
/// The pointer's button that opens menus.
constexpr int rightButton = 3;

/// Waits until the condition holds; false where it does not within the limit.
bool eventually(const std::function<bool()>& condition, milliseconds limit = milliseconds(8000));
/// True where the condition holds from now on until the time has passed.
bool stays(const std::function<bool()>& condition, milliseconds time);

/// A display with a window manager, on which Velmo and other real programs run.
class DesktopSession : public testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    /// Starts an X server with a screen of that size.
    void startServer(const std::string& screen = "1280x720x24", const std::vector<std::string>& options = {});
    /// The same by a command of another kind of server, without what every one is told.
    void startServerBy(std::vector<std::string> command);
    void stopServer();
    /// A monitor of the server, in pixels of the root window; "*" before its name makes it the primary one.
    /// The server has one output, "screen", and adds a monitor of its own while none has that: others have
    /// "none".
    void addMonitor(const std::string& name, const Area& area, const std::string& output) const;
    void removeMonitor(const std::string& name) const;
    /// Settings of the display, a line each.
    void addToResources(const std::string& text) const;
    void startWindowManager(const std::vector<std::string>& command = {"openbox"});
    /// Of one of `windowManagers`, set up as the next one has it.
    std::vector<std::string> windowManagerCommand(const std::string& name) const;
    /// One of `windowManagers`, set up to leave the tray and the drawing to others. "xfwm4" keeps programs
    /// from taking the focus.
    void startWindowManagerNamed(const std::string& name);
    /// While everything else goes on. Both have names of `windowManagers`, or the same one.
    void replaceWindowManager(const std::string& former, const std::string& latter);
    /// It ends without having put anything in order.
    void crashWindowManager() const;
    /// Starts a session bus of this test's own; the programs that are started afterwards are on it. It starts
    /// programs on the display that there is by then.
    void startSessionBus();
    /// A server with a window manager, and a session bus.
    void startDesktop();
    void stopSessionBus() { bus_->stop(); }
    std::string busAddress() const { return bus_->address(); }
    /// Written before Velmo starts; keys as in the defaults file. Not its first launch, unless they say so.
    void writeDefaults(const nlohmann::json& values) const;
    /// Defaults with a clock left of the toggle.
    static nlohmann::json clockDefaults();
    nlohmann::json readDefaults() const;
    /// Of the items in the bar, by their identities from right to left, as it is written down. Empty where it
    /// is not yet.
    std::vector<std::string> savedOrder() const;
    std::filesystem::path defaultsFile() const { return home_ / "config" / "velmo" / "defaults.json"; }

    /// Starts Velmo and waits until its toggle can be clicked.
    void startVelmo();
    /// Asks Velmo to end, as the session does, and waits for that.
    void stopVelmo();
    /// Waits until Velmo has done what it has to: it sleeps, and nothing wakes it for that long. False where
    /// that does not come.
    bool comesToRest(milliseconds quiet = milliseconds(300));
    /// True where Velmo has a file of such a name in its memory.
    bool hasLoaded(const std::string& library);
    ChildProcess run(const std::vector<std::string>& command, const std::string& errorFile = {}) const;
    /// Starts a program and waits until its icon is in the bar. Returns the icon's window.
    xcb_window_t startTrayProgram(const std::string& command, const std::string& windowClass);
    /// The icon of a running program, once it is in the bar.
    xcb_window_t iconOf(const std::string& windowClass) const;
    /// From now on programs of these names only note how they were started. Before Velmo starts.
    void installNotingPrograms(const std::vector<std::string>& names);
    /// What they have noted: a line for each start.
    std::string notedStarts() const;
    /// A window that is none of ours. `corner` says where, e.g. "+200+300".
    xcb_window_t startOrdinaryWindow(const std::string& title = "Ordinary",
                                     const std::string& corner = "+200+300");

    void xdotool(const std::vector<std::string>& arguments) const;
    void movePointer(int x, int y) const;
    void click(xcb_window_t window, int button = 1) const;
    void clickHolding(const std::string& key, xcb_window_t window) const;
    /// Drags with Super held, from the middle of the window to (x, 13) in steps, as slowly as a hand at
    /// least: the window follows before it is let go.
    void superDrag(xcb_window_t window, int x) const;
    /// The same up to its last step, waiting for nobody.
    void superPressAndMove(xcb_window_t window, int x) const;
    void releaseSuper() const;

    XObserver& x() const { return *observer_; }
    ChildProcess& velmo() { return *velmo_; }
    xcb_window_t bar() const;
    xcb_window_t toggle() const;
    /// As the window manager tells. None where it tells of none.
    xcb_window_t activeWindow() const;
    xcb_window_t divider() const;
    xcb_window_t alwaysHiddenDivider() const;
    /// The window in the bar with this title. None where there is none.
    xcb_window_t itemTitled(const std::string& title) const;
    /// The window with this title, while it is shown.
    std::optional<xcb_window_t> shown(const std::string& title) const;
    bool isOnScreen(xcb_window_t window) const;
    /// There, and pushed off the left edge of the screen.
    bool isHidden(xcb_window_t window) const;
    /// Longer than the bar, which no window of it is.
    bool dividerIsExpanded() const;
    /// Where the panel of hidden items is, while it is shown.
    std::optional<Area> panel() const;
    /// By a click on the toggle, where that is what it does.
    void openPanel() const;
    /// While it is shown.
    std::optional<xcb_window_t> settingsWindow() const;
    /// As the button in its frame does.
    void closeWindow(xcb_window_t window) const;

    std::filesystem::path home_;
    Environment environment_;

private:
    /// A window manager that has just begun frames windows that it has seen before; those that are made after
    /// this has returned are none of them.
    void waitUntilWindowsAreManaged() const;
    /// By which it can be told from others. None where none runs.
    xcb_window_t windowManagersWindow() const;

    std::optional<ChildProcess> server_;
    std::optional<PrivateBus> bus_;
    std::optional<ChildProcess> windowManager_;
    std::vector<ChildProcess> programs_;
    std::unique_ptr<XObserver> observer_;
    std::optional<ChildProcess> velmo_;
};

}  // namespace velmo::desktop
