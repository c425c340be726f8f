#include "shadow.h"

#include <xcb/xfixes.h>

#include <cstdint>

namespace velmo::x11 {

void declineShadow(const Connection& connection, xcb_window_t window, const PixelRect& size) {
    xcb_connection_t* raw = connection.raw();
    connection.setCardinals(window, connection.atoms().windowShadow, {0});
    // Others draw none around windows that have a shape, even if it is the usual one.
    const xcb_rectangle_t whole = {0, 0, static_cast<std::uint16_t>(size.width),
                                   static_cast<std::uint16_t>(size.height)};
    const auto region = connection.newId();
    xcb_xfixes_create_region(raw, region, 1, &whole);
    xcb_xfixes_set_window_shape_region(raw, window, XCB_SHAPE_SK_BOUNDING, 0, 0, region);
    xcb_xfixes_destroy_region(raw, region);
}

}  // namespace velmo::x11
