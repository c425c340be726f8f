#pragma once

#include "linux/defaults/file_user_defaults.h"
#include "linux/listeners.h"
#include "linux/toolkit/toolkit_host.h"
#include "linux/x11/menu_bar.h"

#include <functional>
#include <utility>

namespace velmo::x11 {

/// What the toolkit's windows need of the X server beyond what the toolkit does itself.
class ToolkitServices : public ToolkitHost {
public:
    ToolkitServices(MenuBar& bar, Events& events, FileUserDefaults& defaults);

    HostedLoop& loop() override { return connection_.loop(); }
    LocalEvents& localEvents() override { return bar_.localEvents(); }
    Events& events() override { return events_; }
    Rect toPixels(const Rect& rect) const override;
    Rect visibleFrame(const Point& place) const override;
    Point barEnd() const override;
    Registration onBarChange(std::function<void()> listener) override {
        return barListeners_.add(std::move(listener));
    }
    Registration onBarLeave(std::function<void()> listener) override {
        return bar_.onLeave(std::move(listener));
    }
    void updateBar() override;
    bool isComposited() const override;
    Registration onCompositingChange(std::function<void()> listener) override {
        return compositingListeners_.add(std::move(listener));
    }
    Registration keepAbove(WindowNumber window) override;
    void spareButtonStates(void* connection) override;
    void declareShadow(WindowNumber window, const Size& size, double margin) override;
    void bringToWorkspace(WindowNumber window) override;
    void activate(WindowNumber window) override;
    void takeKeyboard(WindowNumber window) override;
    bool hasKeyboard(WindowNumber window) const override;
    void giveKeyboardBack() override;
    std::optional<Point> rememberedPlace(const std::string& name) const override;
    void rememberPlace(const std::string& name, const Point& place) override;

private:
    xcb_window_t keyboardOwner() const;
    void giveKeyboardTo(xcb_window_t window, xcb_timestamp_t time) const;
    bool isLeftToUs(xcb_window_t owner) const;

    MenuBar& bar_;
    Connection& connection_;
    Events& events_;
    FileUserDefaults& defaults_;
    /// Our window that has the keyboard, and who had it before; XCB_WINDOW_NONE for nobody.
    xcb_window_t keyboardTaker_ = XCB_WINDOW_NONE;
    xcb_window_t formerOwner_ = XCB_WINDOW_NONE;
    Listeners compositingListeners_;
    Listeners barListeners_;
    Registration selectionChanges_;
    Registration screenChanges_;
    Registration settingsChanges_;
    /// The time of the last press before the keyboard was taken, wherever it was.
    std::optional<std::uint32_t> pressBeforeTaking_;
};

}  // namespace velmo::x11
