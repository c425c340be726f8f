#pragma once

#include "ns_view.h"

namespace velmo::macos {

enum class NSVisualEffectMaterial : NSInteger {};
enum class NSVisualEffectBlendingMode : NSInteger {};
enum class NSVisualEffectState : NSInteger {};

template <>
inline constexpr std::string_view frameworkName<NSVisualEffectMaterial> = "NSVisualEffectMaterial";
template <>
inline constexpr std::string_view frameworkName<NSVisualEffectBlendingMode> = "NSVisualEffectBlendingMode";
template <>
inline constexpr std::string_view frameworkName<NSVisualEffectState> = "NSVisualEffectState";

class NSVisualEffectView : public ClassOf<NSVisualEffectView, "NSVisualEffectView", NSView> {
public:
    static NSVisualEffectView create() { return make<"initWithFrame:">(CGRect{}); }

    void setMaterial(NSVisualEffectMaterial material) const { send<void, "setMaterial:">(material); }
    void setBlendingMode(NSVisualEffectBlendingMode mode) const { send<void, "setBlendingMode:">(mode); }
    void setState(NSVisualEffectState state) const { send<void, "setState:">(state); }
};

}  // namespace velmo::macos
