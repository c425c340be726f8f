#pragma once

#include "macos/objc/function.h"

#include <cstdint>

namespace velmo::macos {

struct EventTypeSpec {
    std::uint32_t eventClass = 0;
    std::uint32_t eventKind = 0;
};

struct EventHotKeyID {
    std::uint32_t signature = 0;
    std::uint32_t id = 0;
};

template <>
inline constexpr std::string_view frameworkName<EventTypeSpec> = "EventTypeSpec";
template <>
inline constexpr std::string_view frameworkName<EventHotKeyID> = "EventHotKeyID";

namespace carbon {

using Status = std::int32_t;
using EventHandler = Status (*)(void* callRef, void* event, void* userData);

inline constexpr std::uint32_t directObjectParameter = 0x2d2d2d2d;
inline constexpr std::uint32_t hotKeyIDType = 0x686b6964;

extern "C" {
void* GetApplicationEventTarget();
Status InstallEventHandler(void* target, EventHandler handler, std::uint64_t typeCount,
                           const EventTypeSpec* types, void* userData, void** handlerRef);
Status RemoveEventHandler(void* handlerRef);
Status RegisterEventHotKey(std::uint32_t keyCode, std::uint32_t modifiers, EventHotKeyID id, void* target,
                           std::uint32_t options, void** hotKeyRef);
Status UnregisterEventHotKey(void* hotKeyRef);
Status GetEventParameter(void* event, std::uint32_t name, std::uint32_t desiredType,
                         std::uint32_t* actualType, std::uint64_t bufferSize, std::uint64_t* actualSize,
                         void* data);
}

inline constexpr Function<&GetApplicationEventTarget> applicationEventTarget;
inline constexpr Function<&InstallEventHandler> installEventHandler;
inline constexpr Function<&RemoveEventHandler> removeEventHandler;
inline constexpr Function<&RegisterEventHotKey> registerEventHotKey;
inline constexpr Function<&UnregisterEventHotKey> unregisterEventHotKey;
inline constexpr Function<&GetEventParameter> getEventParameter;

}  // namespace carbon
}  // namespace velmo::macos
