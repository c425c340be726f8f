#pragma once

#include <xcb/render.h>

namespace velmo::x11 {

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
