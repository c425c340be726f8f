#include "painting.h"

#include "linux/x11/picture.h"

#include <xcb/xcb_renderutil.h>

#include <algorithm>

namespace velmo::x11 {

namespace {

void composite(xcb_connection_t* connection, std::uint8_t operation, const Picture& source,
               const Picture& destination, const PixelRect& place) {
    xcb_render_composite(connection, operation, source.id(), XCB_RENDER_PICTURE_NONE, destination.id(), 0, 0,
                         0, 0, static_cast<std::int16_t>(place.x), static_cast<std::int16_t>(place.y),
                         static_cast<std::uint16_t>(place.width), static_cast<std::uint16_t>(place.height));
}

}  // namespace

Pixmap::Pixmap(const Connection& connection, std::uint8_t depth, int width, int height)
    : connection_(connection.raw()), id_(connection.newId()) {
    xcb_create_pixmap(connection_, depth, id_, connection.root(),
                      static_cast<std::uint16_t>(std::clamp(width, 1, 32767)),
                      static_cast<std::uint16_t>(std::clamp(height, 1, 32767)));
}

Pixmap::~Pixmap() {
    if (connection_)
        xcb_free_pixmap(connection_, id_);
}

Painting::Painting(Connection& connection)
    : connection_(connection), rootFormat_(formatOf(connection.screen().root_visual)) {
    const auto* formats = xcb_render_util_query_formats(connection.raw());
    const auto* alpha = xcb_render_util_find_standard_format(formats, XCB_PICT_STANDARD_ARGB_32);
    alphaFormat_ = alpha ? alpha->id : 0;
}

xcb_render_pictformat_t Painting::formatOf(xcb_visualid_t visual) const {
    const auto* formats = xcb_render_util_query_formats(connection_.raw());
    const auto* found = xcb_render_util_find_visual_format(formats, visual);
    return found ? found->format : 0;
}

Pixmap Painting::uploadAlpha(const Canvas& canvas) const {
    xcb_connection_t* raw = connection_.raw();
    Pixmap result(connection_, 32, canvas.width(), canvas.height());
    const xcb_gcontext_t context = connection_.newId();
    xcb_create_gc(raw, context, result.id(), 0, nullptr);
    xcb_put_image(raw, XCB_IMAGE_FORMAT_Z_PIXMAP, result.id(), context,
                  static_cast<std::uint16_t>(canvas.width()), static_cast<std::uint16_t>(canvas.height()), 0,
                  0, 0, 32, static_cast<std::uint32_t>(canvas.stride() * canvas.height()), canvas.pixels());
    xcb_free_gc(raw, context);
    return result;
}

Pixmap Painting::upload(const Canvas& canvas) const {
    xcb_connection_t* raw = connection_.raw();
    const int width = canvas.width();
    const int height = canvas.height();
    const Pixmap source = uploadAlpha(canvas);
    // Through the picture formats, so that the root window may have any depth.
    Pixmap result(connection_, connection_.screen().root_depth, width, height);
    composite(raw, XCB_RENDER_PICT_OP_SRC, Picture(raw, source.id(), alphaFormat_),
              Picture(raw, result.id(), rootFormat_), {0, 0, width, height});
    return result;
}

Pixmap Painting::overlay(const Pixmap& tile, int width, int height, const Overlay& over) const {
    xcb_connection_t* raw = connection_.raw();
    Pixmap result(connection_, connection_.screen().root_depth, width, height);
    const Picture destination(raw, result.id(), rootFormat_);
    composite(raw, XCB_RENDER_PICT_OP_SRC, Picture(raw, tile.id(), rootFormat_, true), destination,
              {0, 0, width, height});
    const Picture source(raw, over.drawable, over.format);
    if (over.shaped != XCB_WINDOW_NONE)
        clipToShape(raw, destination.id(), over.shaped, over.place.x, over.place.y);
    composite(raw, XCB_RENDER_PICT_OP_OVER, source, destination, over.place);
    return result;
}

void Painting::setBackground(xcb_window_t window, const Pixmap& pixmap) const {
    const std::uint32_t background = pixmap.id();
    xcb_change_window_attributes(connection_.raw(), window, XCB_CW_BACK_PIXMAP, &background);
    xcb_clear_area(connection_.raw(), 0, window, 0, 0, 0, 0);
}

}  // namespace velmo::x11
