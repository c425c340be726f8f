#include "bar_item.h"

#include <algorithm>

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
                   {0, 0, place_->width, place_->height},
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

void BarItem::setPlace(const std::optional<PixelRect>& place) {
    if (place == place_)
        return;
    const auto former = place_;
    place_ = place;
    if (!place) {
        xcb_unmap_window(connection_.raw(), window_);
        return;
    }
    const std::uint32_t values[] = {static_cast<std::uint32_t>(std::max(place->x, leftmost)),
                                    static_cast<std::uint32_t>(place->y),
                                    static_cast<std::uint32_t>(std::clamp(place->width, 1, widest)),
                                    static_cast<std::uint32_t>(std::clamp(place->height, 1, widest))};
    xcb_configure_window(
        connection_.raw(), window_,
        XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
        values);
    if (!former || former->width != place->width || former->height != place->height)
        resized();
    if (!former)
        xcb_map_window(connection_.raw(), window_);
    moved();
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
