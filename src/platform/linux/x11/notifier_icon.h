#pragma once

#include "lifetime.h"
#include "linux/bar/item_spacing.h"
#include "linux/event_loop/posted_once.h"
#include "linux/status_notifier/item.h"
#include "linux/status_notifier/menu_client.h"
#include "linux/x11/hover_tool_tip.h"
#include "linux/x11/menu_bar.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace velmo::x11 {

/// An item that a program has on the session's bus, in a window of the bar.
class NotifierIcon : public BarItem {
public:
    /// The item outlives this.
    NotifierIcon(MenuBar& bar, status_notifier::Item& item);
    ~NotifierIcon() override;

    /// The item has changed.
    void follow();

    bool isOurs() const override { return false; }
    bool isShown() const override;
    int preferredWidth() const override;
    int leastWidth() const override;
    void appearanceChanged() override { change(); }
    std::optional<Content> content() const override;
    bool click(xcb_button_t button, xcb_timestamp_t time) override;
    bool hasMenu() const override { return true; }
    WindowListEntry describe() const override;
    void willMove(const PixelRect& next) override;

protected:
    void resized() override { unpainted_ = true; }
    void moved() override;

private:
    void pressed(const xcb_button_press_event_t& event) override;
    void released(const xcb_button_release_event_t& event) override;
    void pointerEntered() override { toolTip_.pointerEntered(); }
    void pointerLeft() override { toolTip_.end(); }
    void clicked(xcb_button_t button, int x, int y);
    void provideActivationToken();
    void openMenu(int x, int y);
    void menuCame(status_notifier::MenuClient::Outcome outcome, int x, int y);
    void showMenu();
    bool isOffScreen() const;
    /// The icon is to be drawn anew.
    void change();
    void paint();
    void drawIcon(Canvas& canvas) const;
    /// Draws the icon if it has changed. It has the same size in every width.
    void updateIcon(int height) const;
    /// What the drawn icon covers, in pixels of the window: beyond its edges, where the bar is crowded.
    PixelRect iconArea(const PixelRect& place) const;
    /// What is seen of the item there.
    Pixmap look(const PixelRect& place) const;
    Pixmap highlight(const PixelRect& place) const;
    std::string toolTip() const;

    MenuBar& bar_;
    ItemSpacing spacing_;
    status_notifier::Item& item_;
    bool isShown_ = false;
    std::string title_;
    /// The mouse button that is held down on the item, 0 for none.
    xcb_button_t pressedButton_ = 0;
    xcb_timestamp_t lastTime_ = XCB_CURRENT_TIME;
    std::uint64_t tokens_ = 0;
    /// Its menu is asked for or open.
    std::shared_ptr<status_notifier::MenuClient> menu_;
    bool menuIsOpen_ = false;
    /// The icon alone, for those who picture it, who may be the first to want it.
    mutable Pixmap icon_;
    mutable bool iconIsKnown_ = false;
    bool unpainted_ = false;
    /// For the place that the item is about to have.
    std::optional<Pixmap> nextLook_;
    PostedOnce painting_;
    HoverToolTip toolTip_;
    Lifetime lifetime_;
};

}  // namespace velmo::x11
