#pragma once

#include <xcb/render.h>
#include <xcb/xfixes.h>

#include <cstdint>

namespace velmo::x11 {

/// From now on nothing is drawn onto the picture but within the shape of a window that lies at that place.
inline void clipToShape(xcb_connection_t* connection, xcb_render_picture_t picture, xcb_window_t window,
                        int x, int y) {
    const xcb_xfixes_region_t shape = xcb_generate_id(connection);
    xcb_xfixes_create_region_from_window(connection, shape, window, XCB_SHAPE_SK_BOUNDING);
    xcb_xfixes_set_picture_clip_region(connection, picture, shape, static_cast<std::int16_t>(x),
                                       static_cast<std::int16_t>(y));
    xcb_xfixes_destroy_region(connection, shape);
}

inline void endClip(xcb_connection_t* connection, xcb_render_picture_t picture) {
    xcb_xfixes_set_picture_clip_region(connection, picture, XCB_XFIXES_REGION_NONE, 0, 0);
}

/// A picture over a drawable with all that lies in it, for the time of one operation.
class Picture {
public:
    Picture(xcb_connection_t* connection, xcb_drawable_t drawable, xcb_render_pictformat_t format,
            bool repeat = false)
        : connection_(connection), id_(xcb_generate_id(connection)) {
        const std::uint32_t values[] = {repeat ? XCB_RENDER_REPEAT_NORMAL : XCB_RENDER_REPEAT_NONE,
                                        XCB_SUBWINDOW_MODE_INCLUDE_INFERIORS};
        xcb_render_create_picture(connection, id_, drawable, format,
                                  XCB_RENDER_CP_REPEAT | XCB_RENDER_CP_SUBWINDOW_MODE, values);
    }
    ~Picture() { xcb_render_free_picture(connection_, id_); }
    Picture(const Picture&) = delete;
    Picture& operator=(const Picture&) = delete;

    xcb_render_picture_t id() const { return id_; }

private:
    xcb_connection_t* connection_;
    xcb_render_picture_t id_;
};

}  // namespace velmo::x11
