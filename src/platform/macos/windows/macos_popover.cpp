#include "macos_popover.h"

#include "macos/appkit/ns_accessibility.h"
#include "macos/appkit/ns_application.h"
#include "macos/desktop/event_from.h"
#include "macos/desktop/macos_status_bar_button.h"
#include "macos/views/leaf_nodes.h"

namespace velmo::macos {
namespace {

/// 0 where the system handles no event, or none of the mouse's button.
std::int64_t currentClick() {
    const NSEvent event = NSApplication::shared().currentEvent();
    return event ? eventFrom(event).eventNumber : 0;
}

}  // namespace

MacosPopover::MacosPopover(RunLoop& loop) : host_(loop) {
    popover_.setDelegate(delegate_.object());
    popover_.setContentViewController(NSViewController::with(host_.view()));
}

MacosPopover::~MacosPopover() {
    popover_.setDelegate(Object());
    popover_.close();
}

void MacosPopover::setBehavior(PopoverBehavior behavior) {
    popover_.setBehavior(NSPopoverBehavior{static_cast<NSInteger>(behavior)});
}

void MacosPopover::setAccessibilityLabel(const std::string& label) {
    describeGroup(host_.view(), groupRole.value(), label);
}

void MacosPopover::setContent(const View& content) {
    host_.setContent(content);
    const Size size = host_.fittingSize();
    if (size == size_)
        return;
    size_ = size;
    // The popover gives its content that frame, little by little where it is shown.
    popover_.setContentSize({size.width, size.height});
    host_.layOutFor(size);
}

void MacosPopover::show(const Rect& rect, StatusBarButton& button, RectEdge preferredEdge) {
    const NSView& view = static_cast<MacosStatusBarButton&>(button).view();
    popover_.show(cgRect(rect), view, NSRectEdge{static_cast<NSUInteger>(preferredEdge)});
}

bool MacosPopover::isShown() const {
    return popover_.isShown() || (closingPress_ != 0 && closingPress_ == currentClick());
}

void MacosPopover::willClose(const NSNotification& /*notification*/) {
    closingPress_ = currentClick();
}

void MacosPopover::didClose(const NSNotification& /*notification*/) {
    // A copy: the owner may end the popover.
    if (const auto handler = onClose_)
        handler();
}

}  // namespace velmo::macos
