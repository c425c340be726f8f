#pragma once

#include "macos/foundation/ns_string.h"
#include "macos/objc/function.h"
#include "macos/objc/global.h"

namespace velmo::macos::application_services {

extern "C" {
extern const Id kAXTrustedCheckOptionPrompt;
unsigned char AXIsProcessTrusted();
unsigned char AXIsProcessTrustedWithOptions(Id options);
}

inline constexpr Global<&kAXTrustedCheckOptionPrompt, NSString> promptOption;
inline constexpr Function<&AXIsProcessTrusted> isProcessTrusted;
inline constexpr Function<&AXIsProcessTrustedWithOptions> isProcessTrustedWithOptions;

}  // namespace velmo::macos::application_services
