#include "platform/macos/doubles/popovers.h"

#include "macos/appkit/ns_popover.h"
#include "platform/macos/doubles/added_method.h"
#include "platform/macos/doubles/double_system.h"

namespace velmo::macos::doubles {
namespace {

NSView popoverContent(const NSPopover& popover) {
    const auto controller =
        Message<"NSPopover", false, "contentViewController", NSViewController>::send(popover.get());
    return Message<"NSViewController", false, "view", NSView>::send(controller.get());
}
NSWindow popoverWindow(const NSPopover& popover) {
    return popoverContent(popover).window();
}
bool isPopoverShown(const NSPopover& popover) {
    return popoverWindow(popover).isVisible();
}
void closePopover(const NSPopover& popover) {
    if (!isPopoverShown(popover))
        return;
    const auto delegate = Message<"NSPopover", false, "delegate", Object>::send(popover.get());
    Message<"NSPopoverDelegate", false, "popoverWillClose:", void, Object>::send(delegate.get(), Object());
    popoverWindow(popover).orderOut();
    Message<"NSPopoverDelegate", false, "popoverDidClose:", void, Object>::send(delegate.get(), Object());
}
void performClosePopover(const NSPopover& popover, const Object& /*sender*/) {
    closePopover(popover);
}
void setPopoverBehavior(const NSPopover& /*popover*/, NSInteger behavior) {
    system().popoverBehavior = behavior;
}
void setPopoverSize(const NSPopover& popover, const CGSize& size) {
    system().popover = popover;
    system().popoverSizes.push_back(size);
    if (system().resizesPopovers)
        Message<"NSView", false, "setFrameSize:", void, CGSize>::send(popoverContent(popover).get(), size);
}
void setPopoverAnimates(const NSPopover& /*popover*/, bool animates) {
    system().popoverAnimates = animates;
}
void showPopover(const NSPopover& popover, const CGRect& rect, const NSView& view, NSUInteger edge) {
    system().popover = popover;
    system().popoverEdge = edge;
    callOwn<&showPopover>(popover, rect, view, edge);
}

}  // namespace

void addPopovers() {
    const RawClass popover = classNamed<"NSPopover">();
    setMethod<"isShown", &isPopoverShown>(popover);
    setMethod<"close", &closePopover>(popover);
    setMethod<"performClose:", &performClosePopover>(popover);
    setMethod<"setBehavior:", &setPopoverBehavior>(popover);
    setMethod<"setContentSize:", &setPopoverSize>(popover);
    setMethod<"setAnimates:", &setPopoverAnimates>(popover);
    overrideMethod<"showRelativeToRect:ofView:preferredEdge:", &showPopover>(popover);
}

}  // namespace velmo::macos::doubles
