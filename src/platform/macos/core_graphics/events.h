#pragma once

#include "cg_rect.h"
#include "macos/objc/function.h"

#include <cstdint>

namespace velmo::macos {

enum class CGEventSourceStateID : std::int32_t { hidSystemState = 1 };
enum class CGEventType : std::uint32_t { leftMouseDown = 1, leftMouseUp = 2, mouseMoved = 5 };
enum class CGMouseButton : std::uint32_t { left = 0 };
enum class CGEventTapLocation : std::uint32_t { hid = 0 };

template <>
inline constexpr std::string_view frameworkName<CGEventSourceStateID> = "CGEventSourceStateID";
template <>
inline constexpr std::string_view frameworkName<CGEventType> = "CGEventType";
template <>
inline constexpr std::string_view frameworkName<CGMouseButton> = "CGMouseButton";
template <>
inline constexpr std::string_view frameworkName<CGEventTapLocation> = "CGEventTapLocation";

namespace core_graphics {

extern "C" {
Id CGEventSourceCreate(CGEventSourceStateID state);
Id CGEventCreateMouseEvent(Id source, CGEventType type, CGPoint location, CGMouseButton button);
void CGEventPost(CGEventTapLocation tap, Id event);
}

inline constexpr Function<&CGEventSourceCreate> createEventSource;
inline constexpr Function<&CGEventCreateMouseEvent> createMouseEvent;
inline constexpr Function<&CGEventPost> postEvent;

}  // namespace core_graphics
}  // namespace velmo::macos
