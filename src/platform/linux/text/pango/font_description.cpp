#include "font_description.h"

#include "linux/text/style_size.h"

#include <algorithm>

namespace velmo {

namespace {

/// Of a font that names no size of its own, in points of a font, 72 to the inch of 96 pixels.
constexpr double usualSize = 10;
constexpr double pixelsPerFontPoint = 96.0 / 72;
/// Pixels at scale 1; a line of the largest fits into the bar.
constexpr double smallestSize = 7;
constexpr double largestSize = 19;

PangoWeight weightOf(FontWeight weight) {
    switch (weight) {
        case FontWeight::regular:
            return PANGO_WEIGHT_NORMAL;
        case FontWeight::medium:
            return PANGO_WEIGHT_MEDIUM;
        case FontWeight::semibold:
            return PANGO_WEIGHT_SEMIBOLD;
        case FontWeight::bold:
            return PANGO_WEIGHT_BOLD;
    }
    return PANGO_WEIGHT_NORMAL;
}

/// Pixels at scale 1.
double bodySize(const PangoFontDescription* description) {
    const int size = pango_font_description_get_size(description);
    if (size <= 0)
        return usualSize * pixelsPerFontPoint;
    const double value = static_cast<double>(size) / PANGO_SCALE;
    return pango_font_description_get_size_is_absolute(description) ? value : value * pixelsPerFontPoint;
}

}  // namespace

FontDescriptionPointer fontDescription(const Font& font, const Appearance& appearance) {
    FontDescriptionPointer description(pango_font_description_from_string(appearance.font.c_str()));
    if (font.isMonospaced)
        pango_font_description_set_family(description.get(), "monospace");
    else if (!pango_font_description_get_family(description.get()))
        pango_font_description_set_family(description.get(), "sans");
    const double size = font.size.value_or(bodySize(description.get()) * styleSize(font.style));
    pango_font_description_set_absolute_size(
        description.get(), std::clamp(size, smallestSize, largestSize) * appearance.scale * PANGO_SCALE);
    if (font.weight)
        pango_font_description_set_weight(description.get(), weightOf(*font.weight));
    else if (font.style == TextStyle::headline)
        pango_font_description_set_weight(description.get(), PANGO_WEIGHT_SEMIBOLD);
    return description;
}

}  // namespace velmo
