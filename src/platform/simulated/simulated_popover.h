#pragma once

#include "popover.h"

namespace velmo {

class SimulatedWindows;

class SimulatedPopover : public Popover {
public:
    explicit SimulatedPopover(SimulatedWindows& windows);
    ~SimulatedPopover() override;
    SimulatedPopover(const SimulatedPopover&) = delete;
    SimulatedPopover& operator=(const SimulatedPopover&) = delete;

    void setBehavior(PopoverBehavior behavior) override { behavior_ = behavior; }
    void setAnimates(bool animates) override { animates_ = animates; }
    void setAccessibilityLabel(const std::string& label) override { accessibilityLabel_ = label; }
    void setContent(const View& content) override { content_ = content; }
    bool isShown() const override { return isShown_; }
    void show(const Rect& rect, StatusBarButton& button, RectEdge preferredEdge) override;
    void performClose() override;
    void setOnClose(std::function<void()> handler) override { onClose_ = std::move(handler); }

    PopoverBehavior behavior() const { return behavior_; }
    bool animates() const { return animates_; }
    const std::string& accessibilityLabel() const { return accessibilityLabel_; }
    const View& content() const { return content_; }
    const Rect& rect() const { return rect_; }
    RectEdge edge() const { return edge_; }
    /// The user clicks elsewhere.
    void clickOutside() {
        if (behavior_ == PopoverBehavior::transient)
            performClose();
    }

private:
    SimulatedWindows& windows_;
    PopoverBehavior behavior_ = PopoverBehavior::applicationDefined;
    bool animates_ = false;
    std::string accessibilityLabel_;
    View content_;
    bool isShown_ = false;
    Rect rect_;
    RectEdge edge_ = RectEdge::minX;
    std::function<void()> onClose_;
};

}  // namespace velmo
