#pragma once

#include "macos/appkit/ns_popover.h"
#include "macos/foundation/ns_notification_center.h"
#include "macos/objc/instance.h"
#include "macos/views/view_host.h"
#include "popover.h"

#include <cstdint>

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
    /// Also during the click whose press has closed it: it is not to come back with the release.
    bool isShown() const override;
    void show(const Rect& rect, StatusBarButton& button, RectEdge preferredEdge) override;
    void performClose() override { popover_.performClose(); }
    void setOnClose(std::function<void()> handler) override { onClose_ = std::move(handler); }

private:
    void willClose(const NSNotification& notification);
    void didClose(const NSNotification& notification);

    using Class = Subclass<MacosPopover, "VelmoPopoverDelegate", NSObject,
                           Method<"popoverWillClose:", &MacosPopover::willClose, "NSPopoverDelegate">,
                           Method<"popoverDidClose:", &MacosPopover::didClose, "NSPopoverDelegate">>;

    NSPopover popover_ = NSPopover::create();
    ViewHost host_;
    Size size_;
    std::function<void()> onClose_;
    /// The number of that press; 0 for none.
    std::int64_t closingPress_ = 0;
    Instance<MacosPopover, Class, NSObject> delegate_{*this};
};

}  // namespace velmo::macos
