#pragma once

#include "geometry.h"
#include "macos/objc/type_text.h"

namespace velmo::macos {

struct CGPoint {
    static constexpr const char* encoding = "{CGPoint=dd}";

    double x = 0;
    double y = 0;
};

struct CGSize {
    static constexpr const char* encoding = "{CGSize=dd}";

    double width = 0;
    double height = 0;
};

struct CGRect {
    static constexpr const char* encoding = "{CGRect={CGPoint=dd}{CGSize=dd}}";

    CGPoint origin;
    CGSize size;
};

template <>
inline constexpr std::string_view frameworkName<CGPoint> = "CGPoint";
template <>
inline constexpr std::string_view frameworkName<CGSize> = "CGSize";
template <>
inline constexpr std::string_view frameworkName<CGRect> = "CGRect";

inline Rect rectOf(const CGRect& rect) {
    return {rect.origin.x, rect.origin.y, rect.size.width, rect.size.height};
}

inline CGRect cgRect(const Rect& rect) {
    return {{rect.x, rect.y}, {rect.width, rect.height}};
}

}  // namespace velmo::macos
