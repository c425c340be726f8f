#pragma once

#include "macos/core_graphics/cg_rect.h"
#include "macos/foundation/ns_dictionary.h"

namespace velmo::macos {

enum class NSTrackingAreaOptions : NSUInteger {};

template <>
inline constexpr std::string_view frameworkName<NSTrackingAreaOptions> = "NSTrackingAreaOptions";

class NSTrackingArea : public ClassOf<NSTrackingArea, "NSTrackingArea", NSObject> {
public:
    /// The owner is not retained.
    static NSTrackingArea with(const CGRect& rect, NSTrackingAreaOptions options, const Object& owner) {
        return make<"initWithRect:options:owner:userInfo:">(rect, options, owner, NSDictionary());
    }
};

}  // namespace velmo::macos
