#include "pango_text_renderer.h"

#include "linux/text/pango/font_description.h"

#include <pango/pangocairo.h>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace velmo {

namespace {

/// Bytes; more than any line shows.
constexpr std::size_t longestText = 2000;

double pixels(int units) {
    return static_cast<double>(units) / PANGO_SCALE;
}

}  // namespace

PangoTextRenderer::PangoTextRenderer(const std::string& locale) {
    const ObjectPointer<PangoFontMap> fonts(pango_cairo_font_map_new());
    context_.reset(pango_font_map_create_context(fonts.get()));
    if (!locale.starts_with("C") && !locale.starts_with("POSIX"))
        pango_context_set_language(context_.get(), pango_language_from_string(locale.c_str()));
}

void PangoTextRenderer::use(const Font& font, const Appearance& appearance) {
    if (font_ == font && appearance_ == appearance)
        return;
    font_ = font;
    appearance_ = appearance;
    evenDigits_.forget();
    const auto description = fontDescription(font, appearance);
    pango_context_set_font_description(context_.get(), description.get());
    PangoFontMetrics* metrics = pango_context_get_metrics(context_.get(), description.get(), nullptr);
    ascent_ = pixels(pango_font_metrics_get_ascent(metrics));
    descent_ = pixels(pango_font_metrics_get_descent(metrics));
    pango_font_metrics_unref(metrics);
}

PangoTextRenderer::Line PangoTextRenderer::makeLine(const std::string& text,
                                                    const TextAttributes& attributes) {
    use(attributes.font, attributes.appearance);
    const auto length = static_cast<gssize>(std::min(text.size(), longestText));
    const TextPointer valid(g_utf8_make_valid(text.c_str(), length));
    // What would begin another line.
    std::replace(valid.get(), valid.get() + std::strlen(valid.get()), '\n', ' ');
    ObjectPointer<PangoLayout> layout(pango_layout_new(context_.get()));
    pango_layout_set_single_paragraph_mode(layout.get(), TRUE);
    pango_layout_set_text(layout.get(), valid.get(), -1);
    if (attributes.font.hasMonospacedDigits) {
        PangoAttrList* list = EvenDigits::attributes(valid.get());
        pango_layout_set_attributes(layout.get(), list);
        pango_attr_list_unref(list);
    }
    Line line{std::move(layout), nullptr};
    const auto take = [&] {
        line.line = pango_layout_get_line(line.layout.get(), 0);
        if (attributes.font.hasMonospacedDigits)
            evenDigits_.apply(line.layout.get(), line.line);
    };
    take();
    if (line.width() > attributes.widthLimit) {
        pango_layout_set_ellipsize(line.layout.get(), PANGO_ELLIPSIZE_END);
        pango_layout_set_width(line.layout.get(), attributes.widthLimit * PANGO_SCALE);
        take();
    }
    return line;
}

int PangoTextRenderer::Line::width() const {
    int units = 0;
    for (GSList* link = line->runs; link; link = link->next)
        units += pango_glyph_string_get_width(static_cast<PangoLayoutRun*>(link->data)->glyphs);
    return static_cast<int>(std::ceil(pixels(units)));
}

int PangoTextRenderer::width(const std::string& text, const TextAttributes& attributes) {
    return std::min(makeLine(text, attributes).width(), attributes.widthLimit);
}

void PangoTextRenderer::draw(cairo_t* context, const std::string& text, const TextAttributes& attributes,
                             const Rect& area, const Color& color) {
    const auto line = makeLine(text, attributes);
    // By the user's font, so that a letter from another one does not move the line.
    const double baseline = std::round(area.y + (area.height - ascent_ - descent_) / 2 + ascent_);
    cairo_save(context);
    cairo_set_source_rgba(context, color.red, color.green, color.blue, color.alpha);
    cairo_move_to(context, area.x, baseline);
    pango_cairo_show_layout_line(context, line.line);
    cairo_restore(context);
}

}  // namespace velmo
