#include "bar_place.h"

#include "linux/x11/shadow.h"
#include "linux/x11/window_tree.h"

#include <utility>

namespace velmo::x11 {

BarPlace::BarPlace(Connection& connection, xcb_window_t bar, xcb_window_t dock, std::function<void()> onLeave)
    : connection_(connection),
      bar_(bar),
      dock_(dock),
      onLeave_(std::move(onLeave)),
      topWindow_(connection, bar, dock),
      fullScreenWindows_(connection, dock, [this] { coverChanged(); }) {}

void BarPlace::setArea(const PixelRect& area, const PixelRect& monitor) {
    area_ = area;
    configure();
    declineShadow(connection_, bar_, area);
    fullScreenWindows_.setArea(area, monitor);
}

void BarPlace::setLifted(bool lifted) {
    isLifted_ = lifted;
    configure();
    std::uint32_t values[] = {XCB_STACK_MODE_ABOVE, XCB_STACK_MODE_ABOVE};
    std::uint16_t mask = XCB_CONFIG_WINDOW_STACK_MODE;
    if (!lifted) {
        // Menus and the like are above the bar again, and what is managed will be below it soon.
        values[0] = topLevelOf(connection_, dock_);
        mask |= XCB_CONFIG_WINDOW_SIBLING;
    }
    xcb_configure_window(connection_.raw(), bar_, mask, values);
    topWindow_.look();
}

void BarPlace::coverChanged() {
    configure();
    if (fullScreenWindows_.coverArea())
        onLeave_();
}

void BarPlace::configure() const {
    const int y = isAway() ? -area_.height : area_.y;
    const std::uint32_t values[] = {static_cast<std::uint32_t>(area_.x), static_cast<std::uint32_t>(y),
                                    static_cast<std::uint32_t>(area_.width),
                                    static_cast<std::uint32_t>(area_.height)};
    xcb_configure_window(
        connection_.raw(), bar_,
        XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
        values);
}

}  // namespace velmo::x11
