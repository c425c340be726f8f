#pragma once

#include "event.h"
#include "macos/appkit/ns_application.h"
#include "macos/appkit/ns_button.h"
#include "platform/macos/macos_test.h"

#include <string>
#include <vector>

namespace velmo::macos {

/// An application of GNUstep's on a display.
class DisplayStage : public MacosStage {
public:
    /// The core knows no such event.
    static constexpr auto dragged = EventType{6};

    DisplayStage();
    DisplayStage(const DisplayStage&) = delete;
    DisplayStage& operator=(const DisplayStage&) = delete;
    ~DisplayStage();

    /// Handles what the display tells until the condition holds. False where that takes more than some
    /// seconds.
    static bool runUntil(const std::function<bool()>& condition);
    /// Handles what the display tells for that long.
    static void runFor(double seconds);

    /// None where no window has that title.
    static NSWindow windowTitled(const std::string& title);
    static NSView contentOf(const NSWindow& window);
    /// All below the view, from the lowest to the highest.
    static std::vector<NSView> viewsBelow(const NSView& view);
    /// Those of a class, as they are found.
    template <typename Handle>
    static std::vector<Handle> allBelow(const NSView& view) {
        std::vector<Handle> found;
        for (const NSView& one : viewsBelow(view)) {
            if (Handle handle = as<Handle>(one))
                found.push_back(std::move(handle));
        }
        return found;
    }
    /// True where a text is shown below the view.
    static bool shows(const NSView& view, const std::string& text);
    /// The view of that class that assistive programs call so. None where there is none.
    template <typename Handle>
    Handle named(const NSView& view, const std::string& name) const {
        for (const Handle& one : allBelow<Handle>(view)) {
            const auto label = system.accessibilityLabels.find(one.get());
            if (label != system.accessibilityLabels.end() && label->second == name)
                return one;
        }
        return {};
    }
    static void press(const NSControl& control);
    /// Makes a control tell that the user has changed it.
    static void use(const NSControl& control);
    /// Presses and lets go of the left mouse button in the middle of a view, through the application.
    static void clickInto(const NSView& view);
    /// Has the application handle what the mouse does. Points from the bottom left of the window.
    static void tellOfMouse(EventType type, const CGPoint& point, const NSWindow& window);
    /// Where VELMO_PICTURES names a folder, a picture of the screen goes there.
    static void picture(const std::string& name);
};

using DisplayTest = StageTest<DisplayStage>;

}  // namespace velmo::macos
