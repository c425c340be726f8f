#include "canvas.h"

#include "linux/drawing/symbols.h"

#include <algorithm>
#include <numbers>

namespace velmo {

namespace {

void addEllipticalArc(cairo_t* context, double centerX, double centerY, double xRadius, double yRadius,
                      double from, double to) {
    cairo_save(context);
    cairo_translate(context, centerX, centerY);
    cairo_scale(context, xRadius, yRadius);
    cairo_arc(context, 0, 0, 1, from, to);
    cairo_restore(context);
}

struct AddToPath {
    cairo_t* context;

    void operator()(const RoundedRect& shape) const {
        using std::numbers::pi;
        const Rect& rect = shape.rect;
        const double xRadius = std::min(shape.xRadius, rect.width / 2);
        const double yRadius = std::min(shape.yRadius, rect.height / 2);
        if (xRadius <= 0 || yRadius <= 0) {
            cairo_rectangle(context, rect.x, rect.y, rect.width, rect.height);
            return;
        }
        const double left = rect.minX() + xRadius;
        const double right = rect.maxX() - xRadius;
        const double top = rect.minY() + yRadius;
        const double bottom = rect.maxY() - yRadius;
        cairo_new_sub_path(context);
        addEllipticalArc(context, right, top, xRadius, yRadius, -pi / 2, 0);
        addEllipticalArc(context, right, bottom, xRadius, yRadius, 0, pi / 2);
        addEllipticalArc(context, left, bottom, xRadius, yRadius, pi / 2, pi);
        addEllipticalArc(context, left, top, xRadius, yRadius, pi, 3 * pi / 2);
        cairo_close_path(context);
    }

    void operator()(const Oval& oval) const {
        if (oval.rect.width <= 0 || oval.rect.height <= 0)
            return;
        cairo_new_sub_path(context);
        addEllipticalArc(context, oval.rect.midX(), oval.rect.midY(), oval.rect.width / 2,
                         oval.rect.height / 2, 0, 2 * std::numbers::pi);
        cairo_close_path(context);
    }
};

void drawFills(cairo_t* context, const Drawing& drawing) {
    if (!drawing.flipped) {
        cairo_translate(context, 0, drawing.size.height);
        cairo_scale(context, 1, -1);
    }
    for (const auto& fill : drawing.fills) {
        cairo_new_path(context);
        for (const auto& element : fill.path)
            std::visit(AddToPath{context}, element);
        cairo_set_fill_rule(context, fill.windingRule == WindingRule::evenOdd ? CAIRO_FILL_RULE_EVEN_ODD
                                                                              : CAIRO_FILL_RULE_WINDING);
        cairo_fill(context);
    }
}

/// A template's opacity takes the current source colour.
void drawBitmap(cairo_t* context, const Bitmap& bitmap, bool isTemplate) {
    if (!bitmap.pixels || bitmap.width <= 0 || bitmap.height <= 0)
        return;
    // Cairo only reads a source.
    auto* pixels = const_cast<std::uint8_t*>(bitmap.pixels->data());
    auto* surface = cairo_image_surface_create_for_data(pixels, CAIRO_FORMAT_ARGB32, bitmap.width,
                                                        bitmap.height, bitmap.width * 4);
    cairo_scale(context, bitmap.size.width / bitmap.width, bitmap.size.height / bitmap.height);
    if (isTemplate) {
        cairo_mask_surface(context, surface, 0, 0);
    } else {
        cairo_set_source_surface(context, surface, 0, 0);
        // Else what is enlarged would fade at its edges.
        cairo_pattern_set_extend(cairo_get_source(context), CAIRO_EXTEND_PAD);
        cairo_rectangle(context, 0, 0, bitmap.width, bitmap.height);
        cairo_fill(context);
    }
    cairo_surface_destroy(surface);
}

void setSource(cairo_t* context, const Color& color) {
    cairo_set_source_rgba(context, color.red, color.green, color.blue, color.alpha);
}

}  // namespace

Size imageSize(const Image& image) {
    if (const auto* symbol = std::get_if<Symbol>(&image.content)) {
        if (!isKnownSymbol(symbol->name))
            return {};
        return {symbolSide(*symbol), symbolSide(*symbol)};
    }
    if (const auto* bitmap = std::get_if<Bitmap>(&image.content))
        return bitmap->size;
    return std::get<Drawing>(image.content).size;
}

Canvas::Canvas(int width, int height)
    : surface_(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height)),
      context_(cairo_create(surface_.get())) {}

int Canvas::width() const {
    return cairo_image_surface_get_width(surface_.get());
}

int Canvas::height() const {
    return cairo_image_surface_get_height(surface_.get());
}

int Canvas::stride() const {
    return cairo_image_surface_get_stride(surface_.get());
}

const std::uint8_t* Canvas::pixels() const {
    cairo_surface_flush(surface_.get());
    return cairo_image_surface_get_data(surface_.get());
}

void Canvas::fill(const Color& color) {
    setSource(context_.get(), color);
    cairo_paint(context_.get());
}

void Canvas::fillRect(const Rect& rect, const Color& color) {
    setSource(context_.get(), color);
    cairo_rectangle(context_.get(), rect.x, rect.y, rect.width, rect.height);
    cairo_fill(context_.get());
}

void Canvas::fillRoundedRect(const RoundedRect& shape, const Color& color) {
    setSource(context_.get(), color);
    cairo_new_path(context_.get());
    AddToPath{context_.get()}(shape);
    cairo_fill(context_.get());
}

void Canvas::drawImage(const Image& image, double x, double y, const Appearance& appearance,
                       const Color& color) {
    cairo_t* context = context_.get();
    cairo_save(context);
    cairo_translate(context, x, y);
    cairo_scale(context, appearance.scale, appearance.scale);
    const auto* symbol = std::get_if<Symbol>(&image.content);
    setSource(context, symbol || image.isTemplate ? color : Color{});
    if (symbol)
        drawSymbol(context, *symbol);
    else if (const auto* bitmap = std::get_if<Bitmap>(&image.content))
        drawBitmap(context, *bitmap, image.isTemplate);
    else
        drawFills(context, std::get<Drawing>(image.content));
    cairo_restore(context);
}

}  // namespace velmo
