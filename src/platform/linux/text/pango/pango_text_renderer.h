#pragma once

#include "linux/text/pango/even_digits.h"
#include "linux/text/pango/glib_pointers.h"
#include "linux/text/text_renderer.h"

#include <optional>

namespace velmo {

/// Texts by Pango.
class PangoTextRenderer : public TextRenderer {
public:
    explicit PangoTextRenderer(const std::string& locale);

    int width(const std::string& text, const TextAttributes& attributes) override;
    void draw(cairo_t* context, const std::string& text, const TextAttributes& attributes, const Rect& area,
              const Color& color) override;

private:
    /// A layout of one line, and that line.
    struct Line {
        ObjectPointer<PangoLayout> layout;
        /// The layout's.
        PangoLayoutLine* line;

        int width() const;
    };

    Line makeLine(const std::string& text, const TextAttributes& attributes);
    void use(const Font& font, const Appearance& appearance);

    ObjectPointer<PangoContext> context_;
    EvenDigits evenDigits_;
    std::optional<Font> font_;
    Appearance appearance_;
    /// Pixels from the top of a line to its baseline, and from there to its bottom.
    double ascent_ = 0;
    double descent_ = 0;
};

}  // namespace velmo
