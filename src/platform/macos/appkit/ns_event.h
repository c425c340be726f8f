#pragma once

#include "macos/core_graphics/cg_rect.h"
#include "macos/foundation/ns_string.h"
#include "macos/objc/block.h"

namespace velmo::macos {

enum class NSEventType : NSUInteger {};
enum class NSEventMask : std::uint64_t {};
enum class NSEventModifierFlags : NSUInteger {};

template <>
inline constexpr std::string_view frameworkName<NSEventType> = "NSEventType";
template <>
inline constexpr std::string_view frameworkName<NSEventMask> = "NSEventMask";
template <>
inline constexpr std::string_view frameworkName<NSEventModifierFlags> = "NSEventModifierFlags";

/// What keys without a character type, in UTF-16.
namespace function_key {
inline constexpr char16_t home = 0xf729;
inline constexpr char16_t pageUp = 0xf72c;
inline constexpr char16_t pageDown = 0xf72d;
}  // namespace function_key

class NSEvent : public ClassOf<NSEvent, "NSEvent", NSObject> {
public:
    /// Points, origin at the bottom left of the primary screen.
    static CGPoint mouseLocation() { return sendToClass<CGPoint, "mouseLocation">(); }
    /// A bit for each that is down; the lowest one is the left button's.
    static NSUInteger pressedMouseButtons() { return sendToClass<NSUInteger, "pressedMouseButtons">(); }
    /// Both give a token for `removeMonitor`; none where the system refuses.
    static Object addGlobalMonitor(NSEventMask mask, const Block<void(NSEvent)>& handler);
    /// The handler gives back what is to go on; none swallows the event.
    static Object addLocalMonitor(NSEventMask mask, const Block<NSEvent(NSEvent)>& handler);
    static void removeMonitor(const Object& monitor) { sendToClass<void, "removeMonitor:">(monitor); }

    NSEventType type() const { return send<NSEventType, "type">(); }
    NSEventModifierFlags modifierFlags() const { return send<NSEventModifierFlags, "modifierFlags">(); }
    /// Of mouse events. Points, origin at the bottom left.
    CGPoint locationInWindow() const { return send<CGPoint, "locationInWindow">(); }
    NSInteger windowNumber() const { return send<NSInteger, "windowNumber">(); }

    // Only events of the right kind may be asked for these.

    CGFloat scrollingDeltaX() const { return send<CGFloat, "scrollingDeltaX">(); }
    CGFloat scrollingDeltaY() const { return send<CGFloat, "scrollingDeltaY">(); }
    std::uint16_t keyCode() const { return send<std::uint16_t, "keyCode">(); }
    NSString charactersIgnoringModifiers() const { return send<NSString, "charactersIgnoringModifiers">(); }
    NSInteger eventNumber() const { return send<NSInteger, "eventNumber">(); }
};

inline Object NSEvent::addGlobalMonitor(NSEventMask mask, const Block<void(NSEvent)>& handler) {
    return sendToClass<Object, "addGlobalMonitorForEventsMatchingMask:handler:">(mask, handler);
}

inline Object NSEvent::addLocalMonitor(NSEventMask mask, const Block<NSEvent(NSEvent)>& handler) {
    return sendToClass<Object, "addLocalMonitorForEventsMatchingMask:handler:">(mask, handler);
}

}  // namespace velmo::macos
