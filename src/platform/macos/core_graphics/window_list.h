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

inline constexpr Global<&kCGWindowNumber, NSString> windowNumber;
inline constexpr Global<&kCGWindowLayer, NSString> windowLayer;
inline constexpr Global<&kCGWindowOwnerPID, NSString> windowOwnerPID;
inline constexpr Global<&kCGWindowOwnerName, NSString> windowOwnerName;
inline constexpr Global<&kCGWindowName, NSString> windowName;
inline constexpr Global<&kCGWindowBounds, NSString> windowBounds;
inline constexpr Global<&kCGWindowIsOnscreen, NSString> windowIsOnScreen;
inline constexpr Function<&CGWindowListCopyWindowInfo> copyWindowInfo;
/// False where the dictionary is no rectangle.
inline constexpr Function<&CGRectMakeWithDictionaryRepresentation> makeRect;
inline constexpr Function<&CGPreflightScreenCaptureAccess> preflightCapture;
inline constexpr Function<&CGRequestScreenCaptureAccess> requestCapture;

}  // namespace core_graphics
}  // namespace velmo::macos
