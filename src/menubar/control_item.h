#pragma once

#include "menubar/click_target.h"
#include "platform/lifetime.h"
#include "platform/platform.h"
#include "platform/status_bar.h"

namespace velmo {

/// One of the program's own status items: the toggle, or a divider that hides what is left of it by being
/// longer than any screen.
class ControlItem {
public:
    enum class Kind { toggle = 0, divider = 1 };

    ControlItem(Kind kind, const std::string& autosaveName, const Platform& platform);

    Kind kind() const { return kind_; }
    StatusItem& statusItem() { return *statusItem_; }
    const StatusItem& statusItem() const { return *statusItem_; }

    /// Called for a release of the left or the right button.
    std::function<void(const Event&)> onClick;
    /// Whether a divider is long. Means nothing for the toggle.
    bool isExpanded = false;
    /// Shown while the item is not expanded.
    std::optional<Image> image;

    /// Shows what `isExpanded` and `image` say. Setting them alone changes nothing on screen.
    void update();

    /// Points, origin at the bottom left of the primary screen. Absent while the item is not on a screen.
    std::optional<Rect> screenFrame() const;

private:
    void clicked(const Event& event) const;

    Kind kind_;
    std::unique_ptr<StatusItem> statusItem_;
    std::shared_ptr<ClickTarget> target_;
    Lifetime lifetime_;
};

}  // namespace velmo
