#pragma once

#include "status_bar.h"

#include <vector>

namespace velmo {

class SimulatedApplication;
class SimulatedStatusBar;
class SimulatedStatusItem;

class SimulatedStatusBarButton : public StatusBarButton {
public:
    SimulatedStatusBarButton(SimulatedStatusBar& statusBar, SimulatedStatusItem& item)
        : statusBar_(statusBar), item_(item) {}

    void setImage(const std::optional<Image>& image) override;
    void setTitle(const std::string& title) override;
    void setFont(const Font& font) override { font_ = font; }
    void setEnabled(bool enabled) override;
    void setToolTip(const std::string& text) override { toolTip_ = text; }
    void setAction(std::function<void()> action) override { action_ = std::move(action); }
    void sendActionOn(EventMask mask) override { actionMask_ = mask; }
    Size size() const override;
    void popUp(const Menu& menu, const Point& location) override;
    std::optional<Rect> frameOnScreen() const override;
    WindowNumber windowNumber() const override;
    std::optional<Screen> screen() const override;
    std::unique_ptr<TrackingArea> addTrackingArea(const Rect& rect, TrackingAreaOptions options,
                                                  TrackingAreaOwner* owner) override;

    const std::optional<Image>& image() const { return image_; }
    const std::string& title() const { return title_; }
    const std::optional<Font>& font() const { return font_; }
    /// How often a title was written, equal ones counted.
    int titleWrites() const { return titleWrites_; }
    bool isEnabled() const { return enabled_; }
    const std::string& toolTip() const { return toolTip_; }
    const std::function<void()>& action() const { return action_; }
    EventMask actionMask() const { return actionMask_; }

    /// A mouse button goes down on this button, or comes up on it. The action is sent as
    /// `StatusBarButton::setAction` tells.
    void press(const Event& event, SimulatedApplication& application);
    void release(const Event& event, bool pressedHere, SimulatedApplication& application);

private:
    void send(const Event& event, SimulatedApplication& application);

    SimulatedStatusBar& statusBar_;
    SimulatedStatusItem& item_;
    std::optional<Image> image_;
    std::string title_;
    std::optional<Font> font_;
    int titleWrites_ = 0;
    bool enabled_ = true;
    std::string toolTip_;
    std::function<void()> action_;
    /// As real buttons do until told otherwise.
    EventMask actionMask_ = maskOf(EventType::leftMouseUp);
};

}  // namespace velmo
