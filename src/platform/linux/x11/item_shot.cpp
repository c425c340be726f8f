#include "item_shot.h"

#include "linux/x11/reply.h"

#include <xcb/composite.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <utility>

namespace velmo::x11 {

void ItemShot::take(const Connection& connection, const Painting& painting, const Picture& sheet) {
    xcb_connection_t* raw = connection.raw();
    attributes_ = xcb_get_window_attributes(raw, content_.window);
    const bool isKept = content_.pixmap != XCB_PIXMAP_NONE;
    const auto format = isKept ? painting.alphaFormat() : painting.formatOf(content_.visual);
    xcb_drawable_t drawable = isKept ? content_.pixmap : content_.window;
    if (content_.isRedirected) {
        drawable = connection.newId();
        steps_.push_back(xcb_composite_name_window_pixmap_checked(raw, content_.window, drawable));
    }
    const xcb_render_picture_t source = connection.newId();
    const std::uint32_t mode = XCB_SUBWINDOW_MODE_INCLUDE_INFERIORS;
    steps_.push_back(xcb_render_create_picture_checked(raw, source, drawable, format,
                                                       XCB_RENDER_CP_SUBWINDOW_MODE, &mode));
    draw(raw, source, sheet);
    xcb_render_free_picture(raw, source);
    if (content_.isRedirected)
        xcb_free_pixmap(raw, drawable);
}

/// What both the content and the picture have of the item's window.
void ItemShot::draw(xcb_connection_t* connection, xcb_render_picture_t source, const Picture& sheet) {
    const auto& from = content_.area;
    const int left = std::max(from.x, area_.x);
    const int top = std::max(from.y, area_.y);
    const int right = std::min(from.x + from.width, area_.x + cell_.width);
    const int bottom = std::min(from.y + from.height, area_.y + cell_.height);
    if (left >= right || top >= bottom)
        return;
    if (content_.isRedirected)
        clipToShape(connection, sheet.id(), content_.window, cell_.x + from.x - area_.x,
                    cell_.y + from.y - area_.y);
    steps_.push_back(xcb_render_composite_checked(
        connection, XCB_RENDER_PICT_OP_SRC, source, XCB_RENDER_PICTURE_NONE, sheet.id(),
        static_cast<std::int16_t>(left - from.x), static_cast<std::int16_t>(top - from.y), 0, 0,
        static_cast<std::int16_t>(cell_.x + left - area_.x),
        static_cast<std::int16_t>(cell_.y + top - area_.y), static_cast<std::uint16_t>(right - left),
        static_cast<std::uint16_t>(bottom - top)));
    endClip(connection, sheet.id());
}

bool ItemShot::hasSucceeded(const Connection& connection) {
    const auto reply = owned(xcb_get_window_attributes_reply(connection.raw(), attributes_, nullptr));
    bool succeeded = reply && reply->map_state == XCB_MAP_STATE_VIEWABLE;
    // Every one, because an error that nobody takes stays behind.
    for (const auto step : std::exchange(steps_, {})) {
        if (owned(xcb_request_check(connection.raw(), step)))
            succeeded = false;
    }
    return succeeded;
}

Bitmap ItemShot::cutFrom(const std::vector<std::uint8_t>& pixels, int sheetWidth) const {
    const auto bytes = [](int count) { return static_cast<std::ptrdiff_t>(count) * 4; };
    std::vector<std::uint8_t> cut;
    cut.reserve(static_cast<std::size_t>(bytes(cell_.width * cell_.height)));
    for (int row = 0; row < cell_.height; ++row) {
        const auto begin = pixels.begin() + bytes(row * sheetWidth + cell_.x);
        cut.insert(cut.end(), begin, begin + bytes(cell_.width));
    }
    return {cell_.width, cell_.height, std::make_shared<const std::vector<std::uint8_t>>(std::move(cut)), {}};
}

}  // namespace velmo::x11
