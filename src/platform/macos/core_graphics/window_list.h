#pragma once

#include "cg_rect.h"
#include "macos/foundation/ns_string.h"
#include "macos/objc/function.h"
#include "macos/objc/global.h"

#include <cstdint>

namespace velmo::macos {

enum class CGWindowListOption : std::uint32_t { onScreenOnly = 1 };

template <>
inline constexpr std::string_view frameworkName<CGWindowListOption> = "CGWindowListOption";

namespace core_graphics {

extern "C" {
extern const Id kCGWindowNumber;
extern const Id kCGWindowLayer;
extern const Id kCGWindowOwnerPID;
extern const Id kCGWindowOwnerName;
extern const Id kCGWindowName;
extern const Id kCGWindowBounds;
extern const Id kCGWindowIsOnscreen;
Id CGWindowListCopyWindowInfo(CGWindowListOption option, std::uint32_t relativeToWindow);
bool CGRectMakeWithDictionaryRepresentation(Id dictionary, CGRect* rect);
bool CGPreflightScreenCaptureAccess();
bool CGRequestScreenCaptureAccess();
}

inline constexpr Global<"kCGWindowNumber", NSString, &kCGWindowNumber> windowNumber;
inline constexpr Global<"kCGWindowLayer", NSString, &kCGWindowLayer> windowLayer;
inline constexpr Global<"kCGWindowOwnerPID", NSString, &kCGWindowOwnerPID> windowOwnerPID;
inline constexpr Global<"kCGWindowOwnerName", NSString, &kCGWindowOwnerName> windowOwnerName;
inline constexpr Global<"kCGWindowName", NSString, &kCGWindowName> windowName;
inline constexpr Global<"kCGWindowBounds", NSString, &kCGWindowBounds> windowBounds;
inline constexpr Global<"kCGWindowIsOnscreen", NSString, &kCGWindowIsOnscreen> windowIsOnScreen;
inline constexpr Function<"CGWindowListCopyWindowInfo", &CGWindowListCopyWindowInfo> copyWindowInfo;
/// False where the dictionary is no rectangle.
inline constexpr Function<"CGRectMakeWithDictionaryRepresentation", &CGRectMakeWithDictionaryRepresentation>
    makeRect;
inline constexpr Function<"CGPreflightScreenCaptureAccess", &CGPreflightScreenCaptureAccess> preflightCapture;
inline constexpr Function<"CGRequestScreenCaptureAccess", &CGRequestScreenCaptureAccess> requestCapture;

}  // namespace core_graphics
}  // namespace velmo::macos
