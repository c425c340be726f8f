#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace velmo {

/// Red, green, blue and opacity, each from 0 to 1; not premultiplied.
struct Color {
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 1;

    Color withAlpha(double newAlpha) const { return {red, green, blue, newAlpha}; }
    bool operator==(const Color&) const = default;
};

/// `rgb` is 0xRRGGBB.
constexpr Color colorFromRgb(std::uint32_t rgb) {
    return {((rgb >> 16) & 0xff) / 255.0, ((rgb >> 8) & 0xff) / 255.0, (rgb & 0xff) / 255.0, 1};
}

/// Colours, measures and font that the menu bar is drawn with.
struct Appearance {
    bool dark = false;
    /// Pixels a point.
    double scale = 1;
    /// The user's choice for texts: a family, then a size in points, e.g. "Inter 10". Empty: the toolkit's
    /// own.
    std::string font;
    /// Name of the user's icon theme. Empty: the usual one.
    std::string iconTheme;
    /// What the desktop shows chosen things in. Absent: the toolkit knows.
    std::optional<Color> accent = {};

    Color barBackground() const { return colorFromRgb(dark ? 0x242427 : 0xf6f6f8); }
    Color text() const { return colorFromRgb(dark ? 0xf1f1f3 : 0x1d1d20); }
    Color hairline() const { return colorFromRgb(dark ? 0xffffff : 0x000000).withAlpha(0.09); }

    /// The nearest whole number of pixels.
    int pixels(double points) const;

    bool operator==(const Appearance&) const = default;
};

/// Points.
namespace bar_metrics {
inline constexpr double thickness = 26;
/// What an item shows lies in the middle of the bar and is at most as tall.
inline constexpr double contentHeight = 22;
/// Between the bar's right end and the first item.
inline constexpr double rightMargin = 6;
/// On either side of the content of an item of variable length.
inline constexpr double itemPadding = 8;
/// What is longer ends in an ellipsis.
inline constexpr double longestTitle = 480;
/// Side of the square that a program's tray icon gets, and the room on either side of it.
inline constexpr double trayIconSide = 20;
inline constexpr double trayIconPadding = 5;
/// What such an icon can do with in a crowded bar: its middle is seen, and can be clicked.
inline constexpr double leastIconWidth = 12;
inline constexpr double highlightRadius = 5;
inline constexpr double highlightInset = 2;
}  // namespace bar_metrics

}  // namespace velmo
