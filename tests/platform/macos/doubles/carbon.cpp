#include "macos/carbon/hot_keys.h"
#include "platform/macos/doubles/double_system.h"

#include <cstring>

namespace velmo::macos {
namespace {

struct Installed {
    carbon::EventHandler handler;
    EventTypeSpec type;
    void* userData;
};

struct PressedHotKey {
    EventHotKeyID id;
    bool isReadable;
};

std::map<std::intptr_t, Installed>& installedHandlers() {
    static std::map<std::intptr_t, Installed> handlers;
    return handlers;
}

std::intptr_t nextReference() {
    static std::intptr_t last = 0;
    return ++last;
}

carbon::Status sendToHandlers(PressedHotKey* event) {
    carbon::Status status = -1;
    const auto handlers = installedHandlers();
    for (const auto& [reference, installed] : handlers) {
        if (installed.type.eventClass == 0x6b657962 && installed.type.eventKind == 5)
            status = installed.handler(nullptr, event, installed.userData);
    }
    return status;
}

}  // namespace

namespace doubles {

std::int32_t sendHotKeyEvent(std::uint32_t signature, std::uint32_t id, bool isReadable) {
    PressedHotKey event{{signature, id}, isReadable};
    return sendToHandlers(&event);
}

std::int32_t sendMissingHotKeyEvent() {
    return sendToHandlers(nullptr);
}

}  // namespace doubles

namespace carbon {

extern "C" {
void* GetApplicationEventTarget() {
    static int target = 0;
    return &target;
}

Status InstallEventHandler(void* target, EventHandler handler, std::uint64_t typeCount,
                           const EventTypeSpec* types, void* userData, void** handlerRef) {
    if (target != GetApplicationEventTarget() || typeCount != 1 || !doubles::system().installsHandlers)
        return -50;
    const std::intptr_t reference = nextReference();
    installedHandlers()[reference] = {handler, types[0], userData};
    ++doubles::system().handlerCount;
    *handlerRef = reinterpret_cast<void*>(reference);
    return 0;
}

Status RemoveEventHandler(void* handlerRef) {
    doubles::system().handlerCount -=
        static_cast<int>(installedHandlers().erase(reinterpret_cast<std::intptr_t>(handlerRef)));
    return 0;
}

Status RegisterEventHotKey(std::uint32_t keyCode, std::uint32_t modifiers, EventHotKeyID id, void* target,
                           std::uint32_t options, void** hotKeyRef) {
    if (doubles::system().hotKeyStatus != 0 || target != GetApplicationEventTarget() || options != 0)
        return doubles::system().hotKeyStatus;
    const std::intptr_t reference = nextReference();
    doubles::system().hotKeys[reference] = {keyCode, modifiers, id.signature, id.id};
    *hotKeyRef = reinterpret_cast<void*>(reference);
    return 0;
}

Status UnregisterEventHotKey(void* hotKeyRef) {
    doubles::system().hotKeys.erase(reinterpret_cast<std::intptr_t>(hotKeyRef));
    return 0;
}

Status GetEventParameter(void* event, std::uint32_t name, std::uint32_t desiredType,
                         std::uint32_t* /*actualType*/, std::uint64_t bufferSize,
                         std::uint64_t* /*actualSize*/, void* data) {
    const PressedHotKey& told = *static_cast<PressedHotKey*>(event);
    if (!told.isReadable || name != 0x2d2d2d2d || desiredType != 0x686b6964 || bufferSize != sizeof(told.id))
        return -9870;
    std::memcpy(data, &told.id, sizeof(told.id));
    return 0;
}
}

}  // namespace carbon
}  // namespace velmo::macos
