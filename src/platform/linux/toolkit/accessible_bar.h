#pragma once

#include "event.h"
#include "geometry.h"
#include "linux/registration.h"

#include <functional>
#include <string>
#include <vector>

namespace velmo {

/// An item of the bar, as it is told to those who do not look at it.
struct AccessibleBarItem {
    WindowNumber number = 0;
    std::string name;
    std::string description;
    /// Pixels of the root window.
    Rect place;
    bool hasMenu = false;

    bool operator==(const AccessibleBarItem&) const = default;
};

/// The bar for assistive programs, which know nothing of windows without a toolkit.
class AccessibleBar {
public:
    virtual ~AccessibleBar() = default;

    virtual Rect place() const = 0;
    /// Those that are seen, from left to right.
    virtual std::vector<AccessibleBarItem> items() const = 0;
    /// As a click with the first button, or the second. They return at once, and do nothing where the item
    /// has gone.
    virtual void press(WindowNumber item) = 0;
    virtual void showMenu(WindowNumber item) = 0;
    /// Called after items may have changed.
    [[nodiscard]] virtual Registration onChange(std::function<void()> listener) = 0;
};

}  // namespace velmo
