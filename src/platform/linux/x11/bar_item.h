#pragma once

#include "linux/x11/connection.h"
#include "linux/x11/pixel_rect.h"
#include "window_server.h"

#include <optional>
#include <string>

namespace velmo::x11 {

/// Something that takes a place in the menu bar, in a window of its own.
class BarItem {
public:
    /// `bar` is the window that the item's window is made in; it is unmapped at first.
    BarItem(Connection& connection, xcb_window_t bar);
    virtual ~BarItem();
    BarItem(const BarItem&) = delete;
    BarItem& operator=(const BarItem&) = delete;

    /// Under which the bar remembers the item's place.
    const std::string& identity() const { return identity_; }
    /// True for our own items, false for those of other programs.
    virtual bool isOurs() const = 0;
    /// An item that is not shown takes no room.
    virtual bool isShown() const = 0;
    /// True once the item is about to be taken away.
    virtual bool hasEnded() const { return false; }
    /// Pixels that the item wants at present.
    virtual int preferredWidth() const = 0;
    /// Pixels that it can do with in a crowded bar; no more than preferred.
    virtual int leastWidth() const { return preferredWidth(); }
    /// The colours, the scale or the bar's height have changed; a layout follows.
    virtual void appearanceChanged() = 0;
    /// Called in each layout; where items move, in the same step.
    virtual void displayIfNeeded() {}
    /// What the item looks like, and the window that shows it.
    struct Content {
        xcb_window_t window = XCB_WINDOW_NONE;
        xcb_visualid_t visual = 0;
        /// The window has a pixmap of its own, which is not what is seen of it on the screen.
        bool isRedirected = false;
        /// In pixels of the item's window.
        PixelRect area;
        /// What the window shows, with alpha and without the bar behind it. None where nobody keeps that.
        xcb_pixmap_t pixmap = XCB_PIXMAP_NONE;

        /// True where it can be had wherever the item lies.
        bool isApartFromTheBar() const { return isRedirected || pixmap != XCB_PIXMAP_NONE; }
    };
    /// Absent while the item is not shown, or not drawn yet.
    virtual std::optional<Content> content() const;
    /// What is said of the item to those who do not see it.
    struct Label {
        std::string name;
        std::string description;
    };
    virtual Label label() const;
    /// As if the button were pressed on it and let go at that time of the server's. False where only the
    /// pointer can do that.
    virtual bool click(xcb_button_t /*button*/, xcb_timestamp_t /*time*/) { return false; }
    /// True where a click with the second button may open one.
    virtual bool hasMenu() const { return false; }
    /// As other programs may see it. Bounds and place are the bar's business.
    virtual WindowListEntry describe() const = 0;

    xcb_window_t window() const { return window_; }
    /// Where the item lies in the bar, in pixels of the bar. Absent while it is not shown.
    const std::optional<PixelRect>& place() const { return place_; }
    /// True where the item is shown and the point, in pixels of its window, lies inside it.
    bool contains(int x, int y) const;
    /// Called before a layout moves the item there, while the server still serves everybody; of our own, also
    /// for one that stays while others move.
    virtual void willMove(const PixelRect& /*place*/) {}
    /// Moves the window there and shows it, or hides it.
    void setPlace(const std::optional<PixelRect>& place);

protected:
    void setIdentity(const std::string& identity) { identity_ = identity; }
    /// Where the window is to lie for an item at that place, in pixels of the bar.
    virtual PixelRect windowAreaAt(const PixelRect& place) const;
    /// Where it lies, in pixels of the bar.
    const PixelRect& windowArea() const { return windowArea_; }
    /// The window's size has changed.
    virtual void resized() = 0;
    /// The item has another place.
    virtual void moved() {}
    /// From now on the following is called for what the mouse does in the window.
    void listenToMouse();
    virtual void pressed(const xcb_button_press_event_t& /*event*/) {}
    virtual void released(const xcb_button_release_event_t& /*event*/) {}
    virtual void pointerEntered() {}
    virtual void pointerLeft() {}

    Connection& connection_;

private:
    void handle(const xcb_generic_event_t& event);
    void configureWindow(bool resizes) const;

    std::string identity_;
    xcb_window_t window_;
    std::optional<PixelRect> place_;
    PixelRect windowArea_;
    Registration mouseEvents_;
};

}  // namespace velmo::x11
