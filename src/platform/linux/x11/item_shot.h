#pragma once

#include "image.h"
#include "linux/x11/bar_item.h"
#include "linux/x11/painting.h"
#include "linux/x11/picture.h"

#include <cstdint>
#include <vector>

namespace velmo::x11 {

/// The picture of one item on its way: drawn onto a sheet by the server, and cut from it once that was
/// fetched.
class ItemShot {
public:
    /// `area` is what is shown of the item's window; the picture begins there and has a size of its own.
    ItemShot(const BarItem::Content& content, const PixelRect& area, int width, int height)
        : content_(content), area_(area), cell_{0, 0, width, height} {}

    int width() const { return cell_.width; }
    int height() const { return cell_.height; }
    /// Pixels from the sheet's left edge.
    void setX(int x) { cell_.x = x; }

    /// Asks the server to draw the content onto a sheet that is transparent there.
    void take(const Connection& connection, const Painting& painting, const Picture& sheet);
    /// To be asked once, after the sheet has been fetched: whether the window was there until the end.
    bool hasSucceeded(const Connection& connection);
    /// `pixels` are those of the sheet, `sheetWidth` pixels a row.
    Bitmap cutFrom(const std::vector<std::uint8_t>& pixels, int sheetWidth) const;

private:
    void draw(xcb_connection_t* connection, xcb_render_picture_t source, const Picture& sheet);

    BarItem::Content content_;
    PixelRect area_;
    PixelRect cell_;
    xcb_get_window_attributes_cookie_t attributes_{};
    std::vector<xcb_void_cookie_t> steps_;
};

}  // namespace velmo::x11
