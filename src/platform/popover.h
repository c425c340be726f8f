#pragma once

#include "status_bar.h"
#include "view.h"

#include <cstdint>
#include <functional>
#include <string>

namespace velmo {

/// When a popover closes by itself. The numbers are the same on every system.
enum class PopoverBehavior : std::int64_t { applicationDefined = 0, transient = 1, semitransient = 2 };

/// The edge of a rectangle at which a popover appears. In a space with the origin at the bottom left,
/// `minY` is the lower edge.
enum class RectEdge : std::uint64_t { minX = 0, minY = 1, maxX = 2, maxY = 3 };

/// A window that belongs to a place in another one. Transient popovers close once the user clicks elsewhere
/// or presses Escape. Destroying it closes it.
class Popover {
public:
    virtual ~Popover() = default;

    virtual void setBehavior(PopoverBehavior behavior) = 0;
    virtual void setAnimates(bool animates) = 0;
    /// What assistive programs call it.
    virtual void setAccessibilityLabel(const std::string& label) = 0;
    /// Replaces the description of what the popover shows; its size follows.
    virtual void setContent(const View& content) = 0;
    virtual bool isShown() const = 0;
    /// Shows it beside `rect`, points in the button.
    virtual void show(const Rect& rect, StatusBarButton& button, RectEdge preferredEdge) = 0;
    /// Closes it as the user would.
    virtual void performClose() = 0;
    /// Called once it has closed, for whatever reason.
    virtual void setOnClose(std::function<void()> handler) = 0;
};

}  // namespace velmo
