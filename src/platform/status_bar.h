#pragma once

#include "event.h"
#include "geometry.h"
#include "image.h"
#include "menu.h"
#include "screens.h"
#include "text_style.h"
#include "tracking_area.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace velmo {

/// The clickable face of a status item.
class StatusBarButton {
public:
    virtual ~StatusBarButton() = default;

    virtual void setImage(const std::optional<Image>& image) = 0;
    /// A text instead of the image; empty shows nothing.
    virtual void setTitle(const std::string& title) = 0;
    /// Of the title.
    virtual void setFont(const Font& font) = 0;
    /// A disabled button sends no action.
    virtual void setEnabled(bool enabled) = 0;
    virtual void setToolTip(const std::string& text) = 0;
    /// Called, with the event as the application's current one, for the events chosen by
    /// `sendActionOn`. A release counts only where its press was on the same button.
    virtual void setAction(std::function<void()> action) = 0;
    virtual void sendActionOn(EventMask mask) = 0;
    /// Points.
    virtual Size size() const = 0;
    /// Shows the menu with its upper left corner at `location`: points, origin at the top left of the button,
    /// y downwards. Moved where it would leave the screen. Returns once the menu has closed and the chosen
    /// item has been performed; the run loop goes on meanwhile.
    virtual void popUp(const Menu& menu, const Point& location) = 0;
    /// Where the button is: points, origin at the bottom left of the primary screen. Absent while
    /// it stands in no window.
    virtual std::optional<Rect> frameOnScreen() const = 0;
    /// What events in it bear. 0 while it stands in no window.
    virtual WindowNumber windowNumber() const = 0;
    /// The screen of the button's window. Absent while it stands in no window or on no screen.
    virtual std::optional<Screen> screen() const = 0;
    /// Tracks `rect` (points, in the button), or the whole button with `tracking::inVisibleRect`.
    /// The owner stays valid while the area exists. Null where the system refuses.
    virtual std::unique_ptr<TrackingArea> addTrackingArea(const Rect& rect, TrackingAreaOptions options,
                                                          TrackingAreaOwner* owner) = 0;
};

/// One place in the status bar; destroying it gives the place up.
class StatusItem {
public:
    /// The length that follows from the button's content.
    static constexpr double variableLength = -1;

    virtual ~StatusItem() = default;

    /// Points, or `variableLength`.
    virtual double length() const = 0;
    virtual void setLength(double length) = 0;
    /// The bar remembers the item's place among its neighbours under this name.
    virtual void setAutosaveName(const std::string& name) = 0;
    virtual bool isVisible() const = 0;
    virtual void setVisible(bool visible) = 0;
    /// Owned by the item. Null where the system gives none.
    virtual StatusBarButton* button() = 0;
};

/// The strip of the menu bar in which applications place their items.
class StatusBar {
public:
    virtual ~StatusBar() = default;

    /// Length as in `StatusItem::setLength`. A new item appears at the far left.
    virtual std::unique_ptr<StatusItem> makeStatusItem(double length) = 0;
    /// Height in points.
    virtual double thickness() const = 0;
    /// False where no bar is at the top of the screen, and none comes there when the pointer does.
    virtual bool isOn(const Screen& screen) const = 0;
};

}  // namespace velmo
