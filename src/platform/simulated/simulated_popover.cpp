#include "simulated/simulated_popover.h"

#include "simulated/simulated_windows.h"

#include <utility>

namespace velmo {

SimulatedPopover::SimulatedPopover(SimulatedWindows& windows) : windows_(windows) {
    windows_.popovers_.push_back(this);
}

SimulatedPopover::~SimulatedPopover() {
    std::erase(windows_.popovers_, this);
}

void SimulatedPopover::show(const Rect& rect, StatusBarButton& /*button*/, RectEdge preferredEdge) {
    rect_ = rect;
    edge_ = preferredEdge;
    isShown_ = true;
}

void SimulatedPopover::performClose() {
    if (!std::exchange(isShown_, false))
        return;
    if (const auto handler = onClose_)
        handler();
}

}  // namespace velmo
