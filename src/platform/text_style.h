#pragma once

#include "image.h"

#include <optional>

namespace velmo {

/// The system's named text styles, from the largest to the smallest but for the emphasised headline.
enum class TextStyle { body, headline, callout, caption, caption2 };

/// The font of the texts and symbols in a view. What is absent comes from the view around it.
struct Font {
    TextStyle style = TextStyle::body;
    /// Points; takes the place of the style's own size.
    std::optional<double> size;
    std::optional<FontWeight> weight;
    /// Digits are all equally wide.
    bool hasMonospacedDigits = false;
    bool isMonospaced = false;

    bool operator==(const Font&) const = default;
};

/// Colours by their meaning; the system knows what each looks like, in light and dark.
enum class ColorRole { clear, primary, secondary, accent, white, red, green, orange };

struct SemanticColor {
    ColorRole role = ColorRole::primary;
    /// From 0 to 1, on top of the colour's own.
    double opacity = 1;

    bool operator==(const SemanticColor&) const = default;
};

}  // namespace velmo
