#include "screen_list.h"

#include "linux/drawing/appearance.h"
#include "linux/x11/reply.h"
#include "linux/x11/window_tree.h"

#include <xcb/randr.h>

#include <algorithm>

namespace velmo::x11 {

ScreenList::ScreenList(Connection& connection, const DesktopSettings& settings)
    : connection_(connection),
      settings_(settings),
      reservedEdges_(connection),
      reading_(connection.loop(), [this] { read(); }) {
    xcb_randr_select_input(connection.raw(), connection.root(),
                           XCB_RANDR_NOTIFY_MASK_SCREEN_CHANGE | XCB_RANDR_NOTIFY_MASK_OUTPUT_CHANGE |
                               XCB_RANDR_NOTIFY_MASK_CRTC_CHANGE | XCB_RANDR_NOTIFY_MASK_RESOURCE_CHANGE);
    changes_ = connection.onExtension(xcb_randr_id, [this](const auto&) { reading_.request(); });
    rootChanges_ = connection.onWindow(connection.root(), [this](const xcb_generic_event_t& event) {
        const auto& change = reinterpret_cast<const xcb_configure_notify_event_t&>(event);
        if ((event.response_type & 0x7f) == XCB_CONFIGURE_NOTIFY && change.window == connection_.root())
            reading_.request();
    });
    read();
}

void ScreenList::read() {
    std::vector<PixelRect> found;
    const auto cookie = xcb_randr_get_monitors(connection_.raw(), connection_.root(), 1);
    if (const auto reply = owned(xcb_randr_get_monitors_reply(connection_.raw(), cookie, nullptr))) {
        auto monitors = xcb_randr_get_monitors_monitors_iterator(reply.get());
        for (; monitors.rem; xcb_randr_monitor_info_next(&monitors)) {
            const auto& monitor = *monitors.data;
            const PixelRect rect{monitor.x, monitor.y, monitor.width, monitor.height};
            if (rect.width > 0 && rect.height > 0)
                found.insert(monitor.primary ? found.begin() : found.end(), rect);
        }
    }
    if (found.empty())
        found.push_back(rootArea(connection_));
    if (found == monitors_)
        return;
    monitors_ = std::move(found);
    listeners_.notify();
}

PixelRect ScreenList::primary() const {
    return monitors_.front();
}

Point ScreenList::toScreen(int pixelX, int pixelY) const {
    const auto& origin = monitors_.front();
    const double scale = settings_.appearance().scale;
    return {(pixelX - origin.x) / scale, (origin.y + origin.height - pixelY) / scale};
}

Rect ScreenList::toScreen(const PixelRect& rect) const {
    const double scale = settings_.appearance().scale;
    const Point lowerLeft = toScreen(rect.x, rect.y + rect.height);
    return {lowerLeft.x, lowerLeft.y, rect.width / scale, rect.height / scale};
}

Rect ScreenList::toGlobal(const PixelRect& rect) const {
    const auto& origin = monitors_.front();
    const double scale = settings_.appearance().scale;
    return {(rect.x - origin.x) / scale, (rect.y - origin.y) / scale, rect.width / scale,
            rect.height / scale};
}

Point ScreenList::toPixels(const Point& global) const {
    const auto& origin = monitors_.front();
    const double scale = settings_.appearance().scale;
    return {origin.x + global.x * scale, origin.y + global.y * scale};
}

Rect ScreenList::screenToPixels(const Rect& rect) const {
    const auto& origin = monitors_.front();
    const double scale = settings_.appearance().scale;
    return {origin.x + rect.x * scale, origin.y + origin.height - rect.maxY() * scale, rect.width * scale,
            rect.height * scale};
}

Screen ScreenList::screenOf(std::size_t index) const {
    const auto& appearance = settings_.appearance();
    Screen screen;
    screen.frame = toScreen(monitors_[index]);
    screen.visibleFrame = toScreen(reservedEdges_.within(monitors_[index]));
    screen.backingScaleFactor = appearance.scale;
    if (index == 0) {
        const double bar = appearance.pixels(bar_metrics::thickness) / appearance.scale;
        screen.visibleFrame.height = std::max(screen.visibleFrame.height - bar, 0.0);
    }
    return screen;
}

std::vector<Screen> ScreenList::all() const {
    std::vector<Screen> screens;
    for (std::size_t index = 0; index < monitors_.size(); ++index)
        screens.push_back(screenOf(index));
    return screens;
}

std::optional<Screen> ScreenList::main() const {
    const Point place = pointer();
    for (std::size_t index = 0; index < monitors_.size(); ++index) {
        const auto& [x, y, width, height] = monitors_[index];
        const Rect pixels{double(x), double(y), double(width), double(height)};
        if (pixels.contains(place))
            return screenOf(index);
    }
    return screenOf(0);
}

Point ScreenList::pointer() const {
    const auto reply = owned(xcb_query_pointer_reply(
        connection_.raw(), xcb_query_pointer(connection_.raw(), connection_.root()), nullptr));
    return reply ? Point{double(reply->root_x), double(reply->root_y)} : Point{};
}

}  // namespace velmo::x11
