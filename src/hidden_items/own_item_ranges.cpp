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
    for (const ControlItem* item : {&toggle_, &hiddenDivider_, &alwaysHiddenDivider_}) {
        if (!item->statusItem().isVisible())
            continue;
        const auto frame = frameOnScreen(*item);
        if (frame && frame->width < expandedWidthLimit)
            ranges.emplace_back(frame->minX() - rangeMargin, frame->maxX() + rangeMargin);
    }
    return ranges;
}

}  // namespace velmo
