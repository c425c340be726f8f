#pragma once

#include "ns_control.h"
#include "ns_image.h"

namespace velmo::macos {

enum class NSImageScaling : NSUInteger { proportionallyDown = 0, axesIndependently = 1 };

template <>
inline constexpr std::string_view frameworkName<NSImageScaling> = "NSImageScaling";

class NSImageView : public ClassOf<NSImageView, "NSImageView", NSControl> {
public:
    static NSImageView create() { return make<"initWithFrame:">(CGRect{}); }

    void setImage(const NSImage& image) const { send<void, "setImage:">(image); }
    void setImageScaling(NSImageScaling scaling) const { send<void, "setImageScaling:">(scaling); }
    /// Of templates.
    void setContentTintColor(const NSColor& color) const { send<void, "setContentTintColor:">(color); }
};

}  // namespace velmo::macos
