#include "font_from.h"

#include "image_from.h"

namespace velmo::macos {
namespace {

NSFont styleFont(TextStyle style) {
    switch (style) {
        case TextStyle::headline:
            return NSFont::preferred(headlineStyle.value());
        case TextStyle::callout:
            return NSFont::preferred(calloutStyle.value());
        case TextStyle::caption:
            return NSFont::preferred(captionStyle.value());
        case TextStyle::caption2:
            return NSFont::preferred(caption2Style.value());
        case TextStyle::body:
            break;
    }
    return NSFont::preferred(bodyStyle.value());
}

double sizeOf(const Font& font) {
    if (font.size)
        return *font.size;
    return font.style == TextStyle::body ? NSFont::systemSize() : styleFont(font.style).pointSize();
}

/// What a style has where nothing else is said.
FontWeight styleWeight(TextStyle style) {
    return style == TextStyle::headline ? FontWeight::bold : FontWeight::regular;
}

}  // namespace

NSFont fontFrom(const Font& font) {
    const bool isStyle = !font.size && !font.weight && !font.isMonospaced && !font.hasMonospacedDigits;
    if (isStyle)
        return styleFont(font.style);
    const double size = sizeOf(font);
    const double weight = systemWeight(font.weight.value_or(styleWeight(font.style)));
    if (font.isMonospaced)
        return NSFont::monospaced(size, weight);
    return font.hasMonospacedDigits ? NSFont::monospacedDigits(size, weight) : NSFont::system(size, weight);
}

}  // namespace velmo::macos
