#include "menubar/menu_bar_manager.h"

namespace velmo {

namespace {

/// A divider that hides what is left of it is wider than this.
constexpr double expandedWidthLimit = 500;
constexpr double rangeMargin = 1;

}  // namespace

std::optional<Rect> MenuBarManager::frameOnScreen(const ControlItem& item) {
    return item.screenFrame();
}

std::vector<ClosedInterval> MenuBarManager::ownItemRanges() const {
    std::vector<ClosedInterval> ranges;
    const auto add = [&ranges](const Rect& frame) {
        ranges.emplace_back(frame.minX() - rangeMargin, frame.maxX() + rangeMargin);
    };
    for (const ControlItem* item : {&toggle_, &hiddenDivider_, &alwaysHiddenDivider_}) {
        if (!item->statusItem().isVisible())
            continue;
        const auto frame = frameOnScreen(*item);
        if (frame && frame->width < expandedWidthLimit)
            add(*frame);
    }
    if (const auto frame = clock_->screenFrame())
        add(*frame);
    return ranges;
}

}  // namespace velmo
