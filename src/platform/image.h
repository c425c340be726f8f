#pragma once

#include "geometry.h"

#include <cstdint>
#include <memory>
#include <string>
#include <variant>
#include <vector>

namespace velmo {

enum class FontWeight { regular, medium, semibold, bold };

/// One of the system's named symbols, e.g. "chevron.left". Drawn in the text colour around it.
struct Symbol {
    std::string name;
    /// Height of the text that the symbol is made to stand beside, in points. 0: that of the font around it.
    double pointSize = 0;
    FontWeight weight = FontWeight::regular;

    bool operator==(const Symbol&) const = default;
};

/// Points, in the space of the drawing.
struct RoundedRect {
    Rect rect;
    double xRadius = 0;
    double yRadius = 0;

    bool operator==(const RoundedRect&) const = default;
};

/// The oval inscribed in a rectangle, in the space of the drawing.
struct Oval {
    Rect rect;

    bool operator==(const Oval&) const = default;
};

using PathElement = std::variant<RoundedRect, Oval>;

enum class WindingRule { nonZero = 0, evenOdd = 1 };

/// Fills one path with black.
struct Fill {
    std::vector<PathElement> path;
    WindingRule windingRule = WindingRule::nonZero;

    bool operator==(const Fill&) const = default;
};

/// A picture given as data, so that every system renders it sharply at any scale.
struct Drawing {
    /// Points.
    Size size;
    /// True: the origin is at the top left and y grows downward. False: bottom left, upward.
    bool flipped = false;
    /// In the order in which they are painted.
    std::vector<Fill> fills;

    bool operator==(const Drawing&) const = default;
};

/// A picture made of pixels.
struct Bitmap {
    /// Pixels.
    int width = 0;
    int height = 0;
    /// Rows from top to bottom without gaps: bytes blue, green, red, alpha; colours premultiplied. Never
    /// null where there are pixels, and never changed.
    std::shared_ptr<const std::vector<std::uint8_t>> pixels;
    /// Points that the picture covers.
    Size size;

    /// True for the same pixels, not for equal ones.
    bool operator==(const Bitmap&) const = default;
};

struct Image {
    std::variant<Symbol, Drawing, Bitmap> content;
    /// A template gives only its shape; its colour is that of the text around it.
    bool isTemplate = false;
    std::string accessibilityDescription;

    bool operator==(const Image&) const = default;
};

}  // namespace velmo
