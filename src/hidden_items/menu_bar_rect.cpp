#include "hidden_items/menu_bar_rect.h"

#include "platform/status_bar.h"

#include <algorithm>

namespace velmo {

namespace {

constexpr double menuBarHeightFloor = 24;

}  // namespace

Rect menuBarRect(const Screen& screen, const Platform& platform) {
    const auto screens = platform.screens.all();
    const Rect& primary = screens.empty() ? screen.frame : screens.front().frame;
    double height = screen.frame.maxY() - screen.visibleFrame.maxY();
    if (!(height > 0))
        height = std::max(platform.statusBar.thickness(), menuBarHeightFloor);
    return {screen.frame.minX(), primary.maxY() - screen.frame.maxY(), screen.frame.width, height};
}

}  // namespace velmo
