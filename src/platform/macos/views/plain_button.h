#pragma once

#include "macos/appkit/ns_button.h"
#include "macos/objc/instance.h"
#include "surface_view.h"

#include <functional>

namespace velmo::macos {

/// A button of the system without a look: what is to be seen lies on its surface.
class PlainButton {
public:
    /// Told when it comes to look pressed, and when it does so no longer.
    explicit PlainButton(std::function<void()> onPressChange);
    ~PlainButton();
    PlainButton(const PlainButton&) = delete;
    PlainButton& operator=(const PlainButton&) = delete;

    const NSButton& button() const { return instance_.object(); }
    const NSView& surface() const { return surface_.view(); }
    bool isPressed() const { return isPressed_; }
    void place(const Rect& area) const;

private:
    // The system's own button says nothing of a mouse that leaves it with the button held.

    void mouseDown(const NSEvent& event);
    void mouseDragged(const NSEvent& event);
    void mouseUp(const NSEvent& event);
    bool isUnder(const NSEvent& event) const;
    // NOLINTNEXTLINE(readability-make-member-function-const): methods of a class made here are not.
    NSView hitTest(const CGPoint& point);
    /// Also the first click into a window of an application that is not in front.
    bool acceptsFirstMouse(const NSEvent& /*event*/) { return true; }
    void setPressed(bool pressed);

    using Class = Subclass<PlainButton, "VelmoPlainButton", NSButton,
                           Method<"mouseDown:", &PlainButton::mouseDown, "NSResponder">,
                           Method<"mouseDragged:", &PlainButton::mouseDragged, "NSResponder">,
                           Method<"mouseUp:", &PlainButton::mouseUp, "NSResponder">,
                           Method<"acceptsFirstMouse:", &PlainButton::acceptsFirstMouse, "NSView">,
                           Method<"hitTest:", &PlainButton::hitTest, "NSView">>;

    Instance<PlainButton, Class, NSButton> instance_{*this};
    PlacedSurface surface_{button()};
    std::function<void()> onPressChange_;
    bool isPressed_ = false;
};

}  // namespace velmo::macos
