#pragma once

#include <algorithm>
#include <cmath>

namespace velmo {

/// A position in points. The coordinate space is named by whoever hands it out.
struct Point {
    double x = 0;
    double y = 0;

    bool operator==(const Point&) const = default;
};

/// An extent in points.
struct Size {
    double width = 0;
    double height = 0;

    bool operator==(const Size&) const = default;
};

/// A rectangle in points: its corner with the smallest coordinates and its extent.
/// In a space with the origin at the bottom left, `minY` is the lower edge; with the origin at the
/// top left it is the upper one.
struct Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    double minX() const { return x; }
    double midX() const { return x + width / 2; }
    double maxX() const { return x + width; }
    double minY() const { return y; }
    double midY() const { return y + height / 2; }
    double maxY() const { return y + height; }

    /// The same area with non-negative width and height.
    Rect standardized() const {
        return {std::min(x, x + width), std::min(y, y + height), std::abs(width), std::abs(height)};
    }

    /// True where the two share an area. Rectangles that only touch do not intersect.
    bool intersects(const Rect& other) const {
        const Rect a = standardized();
        const Rect b = other.standardized();
        return a.minX() < b.maxX() && b.minX() < a.maxX() && a.minY() < b.maxY() && b.minY() < a.maxY();
    }

    /// The edges with the smallest coordinates belong to the rectangle, the others do not.
    bool contains(const Point& point) const {
        return point.x >= minX() && point.x < maxX() && point.y >= minY() && point.y < maxY();
    }

    bool operator==(const Rect&) const = default;
};

}  // namespace velmo
