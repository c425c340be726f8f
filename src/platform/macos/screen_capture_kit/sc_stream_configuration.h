#pragma once

#include "macos/foundation/ns_string.h"

namespace velmo::macos {

enum class SCCaptureResolutionType : NSInteger { best = 1 };

template <>
inline constexpr std::string_view frameworkName<SCCaptureResolutionType> = "SCCaptureResolutionType";

class SCStreamConfiguration : public ClassOf<SCStreamConfiguration, "SCStreamConfiguration", NSObject> {
public:
    /// Bytes blue, green, red, alpha: "BGRA".
    static constexpr std::uint32_t bgra = 0x42475241;

    static SCStreamConfiguration create() { return make<"init">(); }

    /// Pixels.
    void setWidth(NSUInteger width) const { send<void, "setWidth:">(width); }
    void setHeight(NSUInteger height) const { send<void, "setHeight:">(height); }
    void setShowsCursor(bool shows) const { send<void, "setShowsCursor:">(shows); }
    void setCaptureResolution(SCCaptureResolutionType type) const {
        send<void, "setCaptureResolution:">(type);
    }
    void setPixelFormat(std::uint32_t format) const { send<void, "setPixelFormat:">(format); }
};

}  // namespace velmo::macos
