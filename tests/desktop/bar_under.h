#pragma once

#include "window_manager_session.h"

#include <string>
#include <vector>

namespace velmo::desktop {

/// What the bar is beside a window manager, and what reaches it past one.
class BarUnder : public WindowManagerSession {
protected:
    static constexpr int barHeight = 26;

    bool barIsOnTopAt(int pointX, int pointY) const { return x().topAt(pointX, pointY) == bar(); }
    /// A window manager may raise a window once more after the bar has come back.
    bool barStaysOnTopAt(int pointX, int pointY) const;
    bool isLeftTo(xcb_window_t window) const;
    std::vector<xcb_window_t> seenWindows() const;
    bool staysWithoutMoreThan(const std::vector<xcb_window_t>& windows) const;
    void activate(xcb_window_t window) const;
    xcb_window_t startActiveWindow(const std::string& title = "Ordinary");
    /// How often the order or the places of windows change in a second.
    int changesOfWindows() const;
    void startOnTwoScreens(const nlohmann::json& defaults);
    bool revealsByScrollingAt(int pointX, int pointY) const;
    /// As large as the screen and without a frame, as games do it that know nothing of full screens.
    xcb_window_t startGame() const;
    void expectStripToItself(xcb_window_t window) const;
    void startWithTwoSections();
    void expectDragsAndClicksToTakeNoFocus();
    void expectBarOnAnotherWorkspace(const std::string& manager);
};

}  // namespace velmo::desktop
