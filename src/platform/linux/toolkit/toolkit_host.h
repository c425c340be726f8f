#pragma once

#include "event.h"
#include "geometry.h"
#include "linux/registration.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace velmo {

class Events;
class HostedLoop;
class LocalEvents;

/// What a toolkit asks of the desktop around it.
class ToolkitHost {
public:
    virtual ~ToolkitHost() = default;

    virtual HostedLoop& loop() = 0;
    /// Has the server leave the toolkit's own connection to it, of the system's own type, in peace when a
    /// button is pressed somewhere.
    virtual void spareButtonStates(void* connection) = 0;
    virtual LocalEvents& localEvents() = 0;
    virtual Events& events() = 0;
    /// From points with the origin at the bottom left of the primary screen, y upwards, to pixels of the root
    /// window, y downwards.
    virtual Rect toPixels(const Rect& rect) const = 0;
    /// Of the screen with that place, in points as above, less the menu bar and other programs' docks.
    virtual Rect visibleFrame(const Point& place) const = 0;
    /// The upper right corner of the screen with the bar, in points as above: items, and what hangs below
    /// them, keep their distance to it.
    virtual Point barEnd() const = 0;
    /// Called after the bar has moved to another place, or has another scale.
    virtual Registration onBarChange(std::function<void()> listener) = 0;
    /// Called after the bar has made way for a window that fills the screen.
    virtual Registration onBarLeave(std::function<void()> listener) = 0;
    /// Shows what has changed in the bar, for whoever is about to keep the loop busy.
    virtual void updateBar() = 0;
    /// True where a compositing manager shows translucent windows.
    virtual bool isComposited() const = 0;
    /// Called after a compositing manager has come or gone.
    virtual Registration onCompositingChange(std::function<void()> listener) = 0;

    /// For as long as the result lives, a window that no window manager knows stays above those that one
    /// manages.
    [[nodiscard]] virtual Registration keepAbove(WindowNumber window) = 0;
    /// The outermost `margin` pixels of a window of this size in pixels are a shadow that it paints itself:
    /// presses there go to what lies beneath, and nobody is to add another shadow. The server knows it when
    /// this returns.
    virtual void declareShadow(WindowNumber window, const Size& size, double margin) = 0;

    /// Brings a window to the workspace that the user looks at. The server has told the window manager when
    /// this returns.
    virtual void bringToWorkspace(WindowNumber window) = 0;
    /// Makes this the window that the user works with, as an answer to what the user did last. It is brought
    /// to the user's workspace first.
    virtual void activate(WindowNumber window) = 0;
    /// Gives the keyboard to a window that no window manager knows.
    virtual void takeKeyboard(WindowNumber window) = 0;
    /// True where this very window has it, and no other of the same program.
    virtual bool hasKeyboard(WindowNumber window) const = 0;
    /// Gives it back to whoever had it before, unless the user has given it to somebody else meanwhile.
    virtual void giveKeyboardBack() = 0;

    /// Where a window was when it was remembered under the name: pixels of the root window.
    virtual std::optional<Point> rememberedPlace(const std::string& name) const = 0;
    virtual void rememberPlace(const std::string& name, const Point& place) = 0;
};

}  // namespace velmo
