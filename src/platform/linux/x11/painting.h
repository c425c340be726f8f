#pragma once

#include "linux/drawing/canvas.h"
#include "linux/x11/connection.h"
#include "linux/x11/pixel_rect.h"

#include <xcb/render.h>

#include <cstdint>
#include <utility>

namespace velmo::x11 {

/// A pixmap in the server, freed with its owner.
class Pixmap {
public:
    Pixmap() = default;
    /// `depth` in bits; pixels are undefined at first.
    Pixmap(const Connection& connection, std::uint8_t depth, int width, int height);
    Pixmap(Pixmap&& other) noexcept
        : connection_(std::exchange(other.connection_, nullptr)), id_(std::exchange(other.id_, 0)) {}
    Pixmap& operator=(Pixmap&& other) noexcept {
        std::swap(connection_, other.connection_);
        std::swap(id_, other.id_);
        return *this;
    }
    Pixmap(const Pixmap&) = delete;
    Pixmap& operator=(const Pixmap&) = delete;
    ~Pixmap();

    xcb_pixmap_t id() const { return id_; }

private:
    xcb_connection_t* connection_ = nullptr;
    xcb_pixmap_t id_ = XCB_PIXMAP_NONE;
};

/// Paints pixmaps of the root window's depth, which serve as the backgrounds of windows: the server then
/// repaints them by itself.
class Painting {
public:
    explicit Painting(Connection& connection);

    /// The picture format of a visual, or none where it has none.
    xcb_render_pictformat_t formatOf(xcb_visualid_t visual) const;
    /// The format of pixmaps with 32 bits a pixel: opacity and premultiplied red, green and blue.
    xcb_render_pictformat_t alphaFormat() const { return alphaFormat_; }
    /// A pixmap with the canvas's pixels.
    Pixmap upload(const Canvas& canvas) const;
    /// The same with 32 bits a pixel, in `alphaFormat`: no background, but something to draw over one.
    Pixmap uploadAlpha(const Canvas& canvas) const;
    /// What is drawn over a background.
    struct Overlay {
        xcb_drawable_t drawable = XCB_NONE;
        xcb_render_pictformat_t format = 0;
        /// Where it lies, in pixels of the background.
        PixelRect place;
        /// A window whose shape the drawable has. None where all of it is to be seen.
        xcb_window_t shaped = XCB_WINDOW_NONE;
    };
    /// A pixmap of `width` times `height` pixels filled with repetitions of `tile`, and something over it.
    Pixmap overlay(const Pixmap& tile, int width, int height, const Overlay& over) const;
    void setBackground(xcb_window_t window, const Pixmap& pixmap) const;

private:
    Connection& connection_;
    xcb_render_pictformat_t rootFormat_ = 0;
    xcb_render_pictformat_t alphaFormat_ = 0;
};

}  // namespace velmo::x11
