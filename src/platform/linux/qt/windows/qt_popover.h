#pragma once

#include "events.h"
#include "linux/qt/windows/floating_window.h"
#include "popover.h"

namespace velmo {

class QtPopover : public Popover {
public:
    explicit QtPopover(ToolkitHost& host);
    ~QtPopover() override;

    void setBehavior(PopoverBehavior behavior) override { behavior_ = behavior; }
    /// It appears at once in any case.
    void setAnimates(bool /*animates*/) override {}
    void setAccessibilityLabel(const std::string& label) override {
        window_.setAccessibleName(QString::fromStdString(label));
    }
    void setContent(const View& content) override;
    bool isShown() const override { return window_.isVisible(); }
    void show(const Rect& rect, StatusBarButton& button, RectEdge preferredEdge) override;
    void performClose() override;
    void setOnClose(std::function<void()> handler) override { onClose_ = std::move(handler); }

private:
    class Keys;

    void place();
    void followBar();
    void watch();
    bool leavesClosingToAnchor(const Event& press) const;

    ToolkitHost& host_;
    FloatingWindow window_;
    PopoverBehavior behavior_ = PopoverBehavior::applicationDefined;
    /// Points, origin at the bottom left of the primary screen.
    Rect anchor_;
    /// Where the bar ended then.
    Point barEnd_;
    WindowNumber anchorWindow_ = 0;
    std::function<void()> onClose_;
    std::vector<std::unique_ptr<EventMonitor>> monitors_;
    std::unique_ptr<Keys> keys_;
};

}  // namespace velmo
