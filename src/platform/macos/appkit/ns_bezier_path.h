#pragma once

#include "macos/core_graphics/cg_rect.h"
#include "macos/foundation/ns_string.h"

namespace velmo::macos {

enum class NSWindingRule : NSUInteger { nonZero = 0, evenOdd = 1 };

template <>
inline constexpr std::string_view frameworkName<NSWindingRule> = "NSWindingRule";

class NSBezierPath : public ClassOf<NSBezierPath, "NSBezierPath", NSObject> {
public:
    static NSBezierPath create() { return sendToClass<NSBezierPath, "bezierPath">(); }

    static NSBezierPath withRoundedRect(const CGRect& rect, CGFloat xRadius, CGFloat yRadius) {
        return sendToClass<NSBezierPath, "bezierPathWithRoundedRect:xRadius:yRadius:">(rect, xRadius,
                                                                                       yRadius);
    }

    void setWindingRule(NSWindingRule rule) const { send<void, "setWindingRule:">(rule); }
    void appendRoundedRect(const CGRect& rect, CGFloat xRadius, CGFloat yRadius) const {
        send<void, "appendBezierPathWithRoundedRect:xRadius:yRadius:">(rect, xRadius, yRadius);
    }
    void appendOval(const CGRect& rect) const { send<void, "appendBezierPathWithOvalInRect:">(rect); }
    void fill() const { send<void, "fill">(); }
};

}  // namespace velmo::macos
