#pragma once

#include "macos/foundation/ns_string.h"
#include "macos/objc/global.h"

namespace velmo::macos {

extern "C" const Id NSAccessibilityGroupRole;
extern "C" const Id NSAccessibilityRadioGroupRole;
inline constexpr Global<&NSAccessibilityGroupRole, NSString> groupRole;
inline constexpr Global<&NSAccessibilityRadioGroupRole, NSString> radioGroupRole;

}  // namespace velmo::macos
