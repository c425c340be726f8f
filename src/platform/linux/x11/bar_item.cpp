#include "bar_item.h"

#include <algorithm>
#include <utility>

namespace velmo::x11 {

namespace {

/// Window coordinates are 16-bit numbers; everything left of this is as far off the screen as can be.
constexpr int leftmost = -32000;
constexpr int widest = 32000;

}  // namespace

BarItem::BarItem(Connection& connection, xcb_window_t bar)
    : connection_(connection), window_(connection.newId()) {
    const std::uint32_t values[] = {XCB_BACK_PIXMAP_PARENT_RELATIVE};
    xcb_create_window(connection.raw(), XCB_COPY_FROM_PARENT, window_, bar, leftmost, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXMAP, values);
}

BarItem::~BarItem() {
    xcb_destroy_window(connection_.raw(), window_);
}

std::optional<BarItem::Content> BarItem::content() const {
    if (!place_)
        return std::nullopt;
    return Content{window_,
                   connection_.screen().root_visual,
                   false,
                   {0, 0, windowArea_.width, windowArea_.height},
                   XCB_PIXMAP_NONE};
}

BarItem::Label BarItem::label() const {
    const auto entry = describe();
    const auto owner = entry.ownerName.value_or(identity_);
    return entry.name ? Label{*entry.name, owner} : Label{owner, {}};
}

bool BarItem::contains(int x, int y) const {
    return place_ && x >= 0 && y >= 0 && x < place_->width && y < place_->height;
}

PixelRect BarItem::windowAreaAt(const PixelRect& place) const {
    return {std::max(place.x, leftmost), place.y, std::clamp(place.width, 1, widest),
            std::clamp(place.height, 1, widest)};
}

void BarItem::setPlace(const std::optional<PixelRect>& place) {
    if (place == place_)
        return;
    const bool wasShown = place_.has_value();
    place_ = place;
    if (!place) {
        xcb_unmap_window(connection_.raw(), window_);
        return;
    }
    const PixelRect former = std::exchange(windowArea_, windowAreaAt(*place));
    const bool resizes =
        !wasShown || former.width != windowArea_.width || former.height != windowArea_.height;
    configureWindow(resizes);
    if (resizes)
        resized();
    if (!wasShown)
        xcb_map_window(connection_.raw(), window_);
    moved();
}

/// A server that is told a size lays out all that is in the window, also where it has that size already.
void BarItem::configureWindow(bool resizes) const {
    const std::uint32_t values[] = {
        static_cast<std::uint32_t>(windowArea_.x), static_cast<std::uint32_t>(windowArea_.y),
        static_cast<std::uint32_t>(windowArea_.width), static_cast<std::uint32_t>(windowArea_.height)};
    constexpr std::uint16_t position = XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y;
    constexpr std::uint16_t size = XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT;
    xcb_configure_window(connection_.raw(), window_, resizes ? position | size : position, values);
}

void BarItem::listenToMouse() {
    connection_.selectEvents(window_, XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE |
                                          XCB_EVENT_MASK_ENTER_WINDOW | XCB_EVENT_MASK_LEAVE_WINDOW);
    mouseEvents_ = connection_.onWindow(window_, [this](const auto& event) { handle(event); });
}

void BarItem::handle(const xcb_generic_event_t& event) {
    switch (event.response_type & 0x7f) {
        case XCB_BUTTON_PRESS:
            pressed(reinterpret_cast<const xcb_button_press_event_t&>(event));
            break;
        case XCB_BUTTON_RELEASE:
            released(reinterpret_cast<const xcb_button_release_event_t&>(event));
            break;
        case XCB_ENTER_NOTIFY:
            pointerEntered();
            break;
        case XCB_LEAVE_NOTIFY:
            pointerLeft();
            break;
        default:
            break;
    }
}

}  // namespace velmo::x11
