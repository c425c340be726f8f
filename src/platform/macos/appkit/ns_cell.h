#pragma once

#include "macos/core_graphics/cg_rect.h"
#include "macos/foundation/ns_string.h"

namespace velmo::macos {

enum class NSLineBreakMode : NSUInteger { wordWrapping = 0, truncatingTail = 4 };

template <>
inline constexpr std::string_view frameworkName<NSLineBreakMode> = "NSLineBreakMode";

class NSCell : public ClassOf<NSCell, "NSCell", NSObject> {
public:
    void setWraps(bool wraps) const { send<void, "setWraps:">(wraps); }
    void setUsesSingleLineMode(bool uses) const { send<void, "setUsesSingleLineMode:">(uses); }
    /// True: what is typed beyond the edge moves the text along.
    void setScrollable(bool scrollable) const { send<void, "setScrollable:">(scrollable); }
    void setLineBreakMode(NSLineBreakMode mode) const { send<void, "setLineBreakMode:">(mode); }
    void setAccessibilityElement(bool isElement) const { send<void, "setAccessibilityElement:">(isElement); }
    /// What it wants where it is offered that much.
    CGSize cellSizeForBounds(const CGRect& bounds) const {
        return send<CGSize, "cellSizeForBounds:">(bounds);
    }
};

}  // namespace velmo::macos
