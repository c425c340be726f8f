#include "macos_popover.h"

#include "macos/desktop/macos_status_bar_button.h"

namespace velmo::macos {

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
    host_.view().setAccessibilityLabel(NSString::from(label));
}

void MacosPopover::setContent(const View& content) {
    host_.setContent(content);
    const Size size = host_.fittingSize();
    const CGRect area = host_.view().frame();
    if (area.size.width == size.width && area.size.height == size.height)
        return;
    popover_.setContentSize({size.width, size.height});
    host_.place({0, 0, size.width, size.height});
}

void MacosPopover::show(const Rect& rect, StatusBarButton& button, RectEdge preferredEdge) {
    const NSView& view = static_cast<MacosStatusBarButton&>(button).view();
    popover_.show(cgRect(rect), view, NSRectEdge{static_cast<NSUInteger>(preferredEdge)});
}

void MacosPopover::didClose(const NSNotification& /*notification*/) {
    // A copy: the owner may end the popover.
    if (const auto handler = onClose_)
        handler();
}

}  // namespace velmo::macos
