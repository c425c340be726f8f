#pragma once

#include "linux/bar/fitting_widths.h"
#include "linux/bar/item_placement.h"
#include "linux/bar/item_spacing.h"
#include "linux/bar/order_saver.h"
#include "linux/current_event.h"
#include "linux/listeners.h"
#include "linux/local_events.h"
#include "linux/text/text_renderer.h"
#include "linux/toolkit/lazy_toolkit.h"
#include "linux/x11/bar_item.h"
#include "linux/x11/bar_place.h"
#include "linux/x11/connection.h"
#include "linux/x11/desktop_settings.h"
#include "linux/x11/modifiers.h"
#include "linux/x11/painting.h"
#include "linux/x11/reserved_strip.h"
#include "linux/x11/screen_list.h"
#include "status_bar.h"
#include "status_item_order.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace velmo::x11 {

/// The strip across the top of the primary screen: its window, the items in it and their order.
class MenuBar : public StatusBar {
public:
    struct Environment {
        Connection& connection;
        DesktopSettings& settings;
        ScreenList& screens;
        Modifiers& modifiers;
        CurrentEvent& currentEvent;
        LocalEvents& localEvents;
        LazyToolkit& toolkit;
        TextRenderer& text;
        std::int32_t processIdentifier;
        const GlobalPreferences& globalPreferences;
    };

    /// `saveOrder` is called with the identities from right to left soon after the order has changed.
    MenuBar(const Environment& environment, const std::vector<std::string>& order,
            std::function<void(const std::vector<std::string>&)> saveOrder);
    ~MenuBar() override;

    std::unique_ptr<StatusItem> makeStatusItem(double length) override;
    double thickness() const override { return bar_metrics::thickness; }
    bool isOn(const Screen& screen) const override;

    // For the items.
    Connection& connection() const { return environment_.connection; }
    ScreenList& screens() const { return environment_.screens; }
    DesktopSettings& settings() const { return environment_.settings; }
    LazyToolkit& toolkit() const { return environment_.toolkit; }
    TextRenderer& text() const { return environment_.text; }
    const Modifiers& modifiers() const { return environment_.modifiers; }
    CurrentEvent& currentEvent() const { return environment_.currentEvent; }
    LocalEvents& localEvents() const { return environment_.localEvents; }
    const Appearance& appearance() const { return environment_.settings.appearance(); }
    const Painting& painting() const { return painting_; }
    std::int32_t processIdentifier() const { return environment_.processIdentifier; }
    xcb_window_t window() const { return window_; }
    /// After the keyboard has been given to somebody, see `ReservedStrip`.
    void tellTime() const { strip_.tellTime(); }
    /// What an item that is being made takes; it keeps it.
    ItemSpacing itemSpacing() const { return ItemSpacing(environment_.globalPreferences); }
    /// A name for an item that has none of its own.
    std::string nextItemName();
    /// A name for an item of the program that is called so: with a number where another item has it already.
    /// Names of our own are for ours alone. `former` is preferred, where it is such a name and nobody's.
    std::string identityFor(const std::string& application, const std::string& former = {}) const;
    void addItem(BarItem& item);
    void removeItem(BarItem& item);
    /// An item's width, visibility or identity has changed. Items are laid out once, when what runs now has
    /// returned, or as soon as somebody asks where one is.
    void setNeedsLayout();
    void layOutIfNeeded();
    /// The bar as it looks behind an item, over the whole canvas.
    void drawBackground(Canvas& canvas) const;
    /// Behind the content of an item that is pressed or whose menu is open: in the middle, that many points
    /// wide.
    void drawHighlight(Canvas& canvas, double width) const;
    const Pixmap& backgroundTile() const { return tile_; }
    /// From pixels of the bar to pixels of the root window.
    PixelRect onRoot(const PixelRect& place) const;

    // For those who look at the whole.
    const std::vector<BarItem*>& items() const { return items_; }
    const PixelRect& area() const { return area_; }
    /// Called after items have come or gone, or are in other places, or have other names.
    Registration onChange(std::function<void()> listener) { return changes_.add(std::move(listener)); }
    /// An item has another name.
    void tellOfChange() const { changes_.notify(); }
    /// What others are told of an item's place, and what its picture shows, in pixels of its window: our own
    /// items as a whole, of others the middle of the bar, beyond which nothing of theirs is, as wide as they
    /// want to be: beyond the edges of the window where the bar is crowded.
    PixelRect shownArea(const BarItem& item) const;
    /// The item at a place in the bar, in pixels of the bar. Null where there is none.
    BarItem* itemAt(int x) const;
    /// The same for a place on the root window.
    BarItem* itemAtRoot(int x) const { return itemAt(x - area_.x); }
    /// Begins a drag. The item stays where it is until `dragTo`; if it leaves the bar, nothing is taken.
    void take(BarItem& item);
    BarItem* taken() const { return taken_; }
    /// The taken item's left edge is at `x`, in pixels of the bar, at once and above the others, which make
    /// room in the next layout where it would be dropped.
    void dragTo(int x);
    /// Ends the drag; an item that was dragged has its place in the order where it is.
    void drop();
    /// Ends the drag; everything is as it was before.
    void putBack();
    /// Called after a drag has ended, however it did.
    Registration onLetGo(std::function<void()> listener) { return letGo_.add(std::move(listener)); }
    /// Called after the bar has made way for a window that fills the screen.
    Registration onLeave(std::function<void()> listener) { return left_.add(std::move(listener)); }
    /// True for a place in the bar, in pixels of the root window.
    bool contains(const Point& pixel) const;
    /// Puts the bar above everything on the screen, also above what fills it, or back to where it belongs.
    void setLifted(bool lifted) { place_.setLifted(lifted); }
    /// True where the item hides what lies left of it.
    bool isLong(const BarItem& item) const;
    /// The same of one so many pixels wide.
    bool isLong(int width) const;

private:
    void settle();
    void makeTile();
    void layOut();
    void showItems(const std::vector<BarItem*>& shown, const std::vector<PixelRect>& places);
    void moveInOneStep(const std::vector<BarItem*>& shown, const std::vector<PixelRect>& places);
    void displayItems() const;
    void stackAtRest(const BarItem& item) const;
    void placeItems();
    void letGo();
    int widthOf(const BarItem& item) const;
    ItemWidth wantedWidth(const BarItem& item, bool yields) const;
    /// Of those items, from right to left.
    std::vector<int> widthsOf(const std::vector<BarItem*>& items) const;
    std::size_t dropIndex() const;
    /// From right to left.
    std::vector<BarItem*> shownItems() const;
    std::vector<item_placement::PlacedItem> placedItems(const BarItem* without) const;
    /// Right edge of the rightmost place, in pixels of the bar.
    int rightEdge() const;

    Environment environment_;
    Painting painting_;
    StatusItemOrder order_;
    OrderSaver orderSaver_;
    xcb_window_t window_;
    PixelRect area_;
    Pixmap tile_;
    ReservedStrip strip_;
    BarPlace place_;
    std::vector<BarItem*> items_;
    BarItem* taken_ = nullptr;
    bool isDragging_ = false;
    int draggedX_ = 0;
    Listeners letGo_;
    Listeners changes_;
    Listeners left_;
    int unnamedItems_ = 0;
    bool needsLayout_ = false;
    PostedOnce layout_;
    Registration settingsChanges_;
    Registration screenChanges_;
};

}  // namespace velmo::x11
