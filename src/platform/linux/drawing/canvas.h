#pragma once

#include "geometry.h"
#include "image.h"
#include "linux/drawing/appearance.h"

#include <cairo.h>

#include <cstdint>
#include <memory>

namespace velmo {

/// Points that an image covers.
Size imageSize(const Image& image);

/// A bitmap in memory to draw on. Sizes are in pixels, y runs downward, and pixels are 32-bit
/// 0xAARRGGBB in the machine's byte order, colours premultiplied by the opacity.
class Canvas {
public:
    Canvas(int width, int height);

    int width() const;
    int height() const;
    /// Bytes from one row to the next.
    int stride() const;
    const std::uint8_t* pixels() const;
    /// For those who draw what a canvas does not offer.
    cairo_t* context() const { return context_.get(); }

    void fill(const Color& color);
    void fillRect(const Rect& rect, const Color& color);
    void fillRoundedRect(const RoundedRect& shape, const Color& color);
    /// Draws an image with its top left corner at (x, y). Symbols and templates take the colour,
    /// everything else is black.
    void drawImage(const Image& image, double x, double y, const Appearance& appearance, const Color& color);

private:
    struct DestroySurface {
        void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
    };
    struct DestroyContext {
        void operator()(cairo_t* context) const { cairo_destroy(context); }
    };

    std::unique_ptr<cairo_surface_t, DestroySurface> surface_;
    std::unique_ptr<cairo_t, DestroyContext> context_;
};

}  // namespace velmo
