#pragma once

#include "lifetime.h"
#include "linux/bar/item_spacing.h"
#include "linux/drawing/canvas.h"
#include "linux/text/text_renderer.h"
#include "linux/x11/bar_item.h"
#include "linux/x11/hover_tool_tip.h"
#include "linux/x11/modifiers.h"
#include "linux/x11/painting.h"
#include "status_bar.h"

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace velmo::x11 {

class MenuBar;

/// One of our own status items: its window, which bears the autosave name as title, and its button.
class StatusItemWindow : public StatusItem, public StatusBarButton, public BarItem {
public:
    StatusItemWindow(MenuBar& bar, double length);
    ~StatusItemWindow() override;

    double length() const override { return length_; }
    void setLength(double length) override;
    void setAutosaveName(const std::string& name) override;
    bool isVisible() const override { return visible_; }
    void setVisible(bool visible) override;
    StatusBarButton* button() override { return this; }

    void setImage(const std::optional<Image>& image) override;
    void setTitle(const std::string& title) override;
    void setFont(const Font& font) override;
    void setEnabled(bool enabled) override;
    void setToolTip(const std::string& text) override { toolTipText_ = text; }
    void setAction(std::function<void()> action) override { action_ = std::move(action); }
    void sendActionOn(EventMask mask) override { actionMask_ = mask; }
    Size size() const override;
    void popUp(const Menu& menu, const Point& location) override;
    std::optional<Rect> frameOnScreen() const override;
    WindowNumber windowNumber() const override { return window(); }
    std::optional<Screen> screen() const override;
    std::unique_ptr<TrackingArea> addTrackingArea(const Rect& rect, TrackingAreaOptions options,
                                                  TrackingAreaOwner* owner) override;

    bool isOurs() const override { return true; }
    bool isShown() const override { return visible_; }
    int preferredWidth() const override;
    void willMove(const PixelRect& next) override;
    void displayIfNeeded() override;
    Label label() const override;
    bool click(xcb_button_t button, xcb_timestamp_t time) override;
    bool hasMenu() const override { return true; }
    WindowListEntry describe() const override;

    void appearanceChanged() override;

protected:
    PixelRect windowAreaAt(const PixelRect& place) const override;
    void resized() override { needsDisplay_ = true; }

private:
    /// All that the picture of the item is made from, in the present appearance.
    struct Look {
        std::optional<Image> image;
        std::string title;
        Font font;
        bool highlighted = false;
        /// Pixels.
        int width = 0;
        int height = 0;

        bool operator==(const Look&) const = default;
    };

    void setNeedsDisplay();
    bool isBlank() const;
    const Pixmap* picture(int width, int height);
    /// Of what the item shows, in points.
    double contentWidth() const;
    TextAttributes titleAttributes() const;
    void measureTitle();
    Pixmap draw(const Look& look) const;
    void drawContent(Canvas& canvas) const;
    void setHighlighted(bool highlighted);
    void pressed(const xcb_button_press_event_t& event) override;
    void released(const xcb_button_release_event_t& event) override;
    void pointerEntered() override { toolTip_.pointerEntered(); }
    void pointerLeft() override { toolTip_.end(); }
    bool isSwallowed(const Event& event);
    void send(const Event& event);

    MenuBar& bar_;
    ItemSpacing spacing_;
    double length_;
    bool visible_ = true;
    std::optional<Image> image_;
    std::string title_;
    Font font_;
    /// Pixels.
    int titleWidth_ = 0;
    bool enabled_ = true;
    bool needsDisplay_ = true;
    /// Drawn already, the oldest first: a click shows the same few again and again.
    std::deque<std::pair<Look, Pixmap>> looks_;
    std::string toolTipText_;
    HoverToolTip toolTip_;
    std::function<void()> action_;
    EventMask actionMask_ = maskOf(EventType::leftMouseUp);
    /// The mouse button that is held down on the item, 0 for none.
    xcb_button_t pressedButton_ = 0;
    std::int64_t pressNumber_ = 0;
    /// Its menu is open.
    bool highlighted_ = false;
    Lifetime lifetime_;
};

}  // namespace velmo::x11
