#pragma once

#include "macos/appkit/ns_popover.h"
#include "macos/foundation/ns_notification_center.h"
#include "macos/objc/instance.h"
#include "macos/views/view_host.h"
#include "popover.h"

namespace velmo::macos {

class MacosPopover : public Popover {
public:
    explicit MacosPopover(RunLoop& loop);
    ~MacosPopover() override;
    MacosPopover(const MacosPopover&) = delete;
    MacosPopover& operator=(const MacosPopover&) = delete;

    void setBehavior(PopoverBehavior behavior) override;
    void setAnimates(bool animates) override { popover_.setAnimates(animates); }
    void setAccessibilityLabel(const std::string& label) override;
    void setContent(const View& content) override;
    bool isShown() const override { return popover_.isShown(); }
    void show(const Rect& rect, StatusBarButton& button, RectEdge preferredEdge) override;
    void performClose() override { popover_.performClose(); }
    void setOnClose(std::function<void()> handler) override { onClose_ = std::move(handler); }

private:
    void didClose(const NSNotification& notification);

    using Class = Subclass<MacosPopover, "VelmoPopoverDelegate", NSObject,
                           Method<"popoverDidClose:", &MacosPopover::didClose, "NSPopoverDelegate">>;

    NSPopover popover_ = NSPopover::create();
    ViewHost host_;
    std::function<void()> onClose_;
    Instance<MacosPopover, Class, NSObject> delegate_{*this};
};

}  // namespace velmo::macos
