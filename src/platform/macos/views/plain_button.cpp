#include "plain_button.h"

#include "control_layout.h"

#include <utility>

namespace velmo::macos {

PlainButton::PlainButton(std::function<void()> onPressChange) : onPressChange_(std::move(onPressChange)) {
    button().setButtonType(NSButtonType::momentaryPushIn);
    button().setBordered(false);
    button().setTransparent(true);
    button().setTitle(NSString::from(""));
}

PlainButton::~PlainButton() {
    button().removeFromSuperview();
}

void PlainButton::place(const Rect& area) const {
    macos::place(button(), area);
    macos::place(surface(), {0, 0, area.width, area.height});
}

void PlainButton::setPressed(bool pressed) {
    if (isPressed_ == pressed)
        return;
    isPressed_ = pressed;
    onPressChange_();
}

bool PlainButton::isUnder(const NSEvent& event) const {
    const CGPoint point = event.locationInWindow();
    return rectOf(button().convertRectTo(button().bounds(), NSView())).contains({point.x, point.y});
}

void PlainButton::mouseDown(const NSEvent& /*event*/) {
    setPressed(button().isEnabled());
}

void PlainButton::mouseDragged(const NSEvent& event) {
    setPressed(button().isEnabled() && isUnder(event));
}

void PlainButton::mouseUp(const NSEvent& event) {
    // Held here, because the action may end this.
    const NSButton self = button();
    setPressed(false);
    if (self.isEnabled() && isUnder(event))
        self.performAction();
}

/// What lies on it would take the clicks otherwise.
// NOLINTNEXTLINE(readability-make-member-function-const): methods of a class made here are not.
NSView PlainButton::hitTest(const CGPoint& point) {
    if (button().isHidden() || !rectOf(button().frame()).contains({point.x, point.y}))
        return {};
    return button();
}

}  // namespace velmo::macos
