#pragma once

#include "linux/event_loop/posted_once.h"
#include "linux/listeners.h"
#include "linux/x11/connection.h"
#include "linux/x11/desktop_settings.h"
#include "linux/x11/pixel_rect.h"
#include "linux/x11/reserved_edges.h"
#include "screens.h"

#include <functional>
#include <utility>
#include <vector>

namespace velmo::x11 {

/// The monitors, and what of them the menu bar and docks leave to the windows.
class ScreenList : public Screens {
public:
    ScreenList(Connection& connection, const DesktopSettings& settings);

    std::vector<Screen> all() const override;
    /// The screen with the pointer.
    std::optional<Screen> main() const override;

    /// The monitor that the menu bar is on.
    PixelRect primary() const;
    /// Points, origin at the bottom left of the primary screen, y upwards.
    Point toScreen(int pixelX, int pixelY) const;
    Rect toScreen(const PixelRect& rect) const;
    /// Points, origin at the top left of the primary screen, y downwards.
    Rect toGlobal(const PixelRect& rect) const;
    /// From there to pixels of the root window.
    Point toPixels(const Point& global) const;
    /// From points as `toScreen` gives them to pixels of the root window, y downwards.
    Rect screenToPixels(const Rect& rect) const;
    /// The pointer's place on the root window, in pixels.
    Point pointer() const;

    /// All of them, in pixels of the root window.
    const std::vector<PixelRect>& monitors() const { return monitors_; }

    /// Called after monitors have come, gone or changed.
    Registration onChange(std::function<void()> listener) { return listeners_.add(std::move(listener)); }

private:
    void read();
    Screen screenOf(std::size_t index) const;

    Connection& connection_;
    const DesktopSettings& settings_;
    /// The primary one first; never empty.
    std::vector<PixelRect> monitors_;
    ReservedEdges reservedEdges_;
    Listeners listeners_;
    PostedOnce reading_;
    Registration changes_;
    Registration rootChanges_;
};

}  // namespace velmo::x11
