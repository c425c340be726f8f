#pragma once

#include "desktop_session.h"

#include <optional>
#include <string>
#include <vector>

namespace velmo::desktop {

/// What composes the screen from the windows: nobody, a program, or the window manager by itself.
enum class Composition { none, picom, xfwm4, metacity };

/// For the names of tests.
std::string nameOf(Composition composition);

/// A display on which a click on the toggle opens the panel, which says that nothing is hidden yet.
class PanelWindowSession : public DesktopSession {
protected:
    /// Points around the strip in which its shadow is painted.
    static constexpr int shadowMargin = 16;

    void TearDown() override;

    void startVelmoForPanels(nlohmann::json defaults = nlohmann::json::object());
    /// The number of the panel's window while it is on the screen.
    std::optional<xcb_window_t> panelWindow() const { return shown("Velmo.Panel"); }
    /// The panel less its shadow, where it has one of that many points.
    Area strip(int margin = 0) const;
    void openPanelWindow();

    /// Of the test's own: what it gets stays in the queue of the observer's connection.
    xcb_window_t makeWindow(const Area& area, std::uint32_t color) const;
    void giveKeyboardTo(xcb_window_t window) const;
    /// How many events of the type our own windows have got since this was asked last.
    int eventsGot(std::uint8_t type) const;

    /// The child of the root window that has the window in it, or is it.
    xcb_window_t topLevelOf(xcb_window_t window) const;
    bool isAbove(xcb_window_t upper, xcb_window_t lower) const;

    void startBeside(const std::vector<std::string>& command) { beside_.push_back(run(command)); }
    /// Waits until it does its work.
    void startCompositingManager();
    void startComposition(Composition composition);
    void stopCompositingManager();
    /// Waits until the screen shows what windows show.
    void untilComposited() const;

private:
    void untilCompositionBegins() const;
    bool isRedirected(xcb_window_t window) const;

    std::vector<ChildProcess> beside_;
    std::optional<ChildProcess> compositingManager_;
};

}  // namespace velmo::desktop
