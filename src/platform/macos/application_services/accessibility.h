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

inline constexpr Global<"kAXTrustedCheckOptionPrompt", NSString, &kAXTrustedCheckOptionPrompt> promptOption;
inline constexpr Function<"AXIsProcessTrusted", &AXIsProcessTrusted> isProcessTrusted;
inline constexpr Function<"AXIsProcessTrustedWithOptions", &AXIsProcessTrustedWithOptions>
    isProcessTrustedWithOptions;

}  // namespace velmo::macos::application_services
