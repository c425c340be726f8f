#include "platform/macos/doubles/menu_bar.h"

#include "platform/macos/doubles/added_method.h"
#include "platform/macos/doubles/call_block.h"
#include "platform/macos/doubles/double_system.h"
#include "platform/macos/doubles/method_without_display.h"
#include "platform/macos/doubles/record_class.h"

#include <gtest/gtest.h>

namespace velmo::macos {
namespace doubles {
namespace {

CGPoint mouseLocation(const NSObject& /*eventClass*/) {
    return {system().mouseLocation.x, system().mouseLocation.y};
}
NSUInteger pressedMouseButtons(const NSObject& /*eventClass*/) {
    return system().pressedMouseButtons;
}
NSObject addMonitor(bool isLocal, std::uint64_t mask, void* handler) {
    if (!system().allowsMonitors)
        return {};
    const NSObject token = NSObject::create();
    system().monitors.push_back(
        {.token = token, .isLocal = isLocal, .mask = mask, .handler = _Block_copy(handler)});
    return token;
}
NSObject addGlobalMonitor(const NSObject& /*eventClass*/, std::uint64_t mask, void* handler) {
    return addMonitor(false, mask, handler);
}
NSObject addLocalMonitor(const NSObject& /*eventClass*/, std::uint64_t mask, void* handler) {
    return addMonitor(true, mask, handler);
}
void removeMonitor(const NSObject& /*eventClass*/, const Object& token) {
    std::erase_if(system().monitors, [&](const InstalledMonitor& monitor) {
        if (!(monitor.token == token))
            return false;
        _Block_release(monitor.handler);
        return true;
    });
}

double eventNumberMember(const Object& event, const char* name) {
    EXPECT_TRUE(member(event, name)) << "an event of that kind has no " << name;
    return numberMember(event, name);
}
NSUInteger eventType(const NSObject& event) {
    return static_cast<NSUInteger>(numberMember(event, "type"));
}
NSUInteger eventModifiers(const NSObject& event) {
    return static_cast<NSUInteger>(numberMember(event, "modifiers"));
}
NSInteger eventWindow(const NSObject& event) {
    return static_cast<NSInteger>(numberMember(event, "window"));
}
CGFloat eventDeltaX(const NSObject& event) {
    return eventNumberMember(event, "deltaX");
}
CGFloat eventDeltaY(const NSObject& event) {
    return eventNumberMember(event, "deltaY");
}
std::uint16_t eventKeyCode(const NSObject& event) {
    return static_cast<std::uint16_t>(eventNumberMember(event, "keyCode"));
}
NSString eventCharacters(const NSObject& event) {
    return as<NSString>(member(event, "characters"));
}
NSInteger eventNumber(const NSObject& event) {
    return static_cast<NSInteger>(eventNumberMember(event, "number"));
}

}  // namespace

void addEvents() {
    const RawClass events = metaclassOf(classNamed<"NSEvent">());
    setMethodWithoutDisplay<"mouseLocation", &mouseLocation>(events);
    setMethod<"pressedMouseButtons", &pressedMouseButtons>(events);
    setMethod<"addGlobalMonitorForEventsMatchingMask:handler:", &addGlobalMonitor>(events);
    setMethod<"addLocalMonitorForEventsMatchingMask:handler:", &addLocalMonitor>(events);
    setMethod<"removeMonitor:", &removeMonitor>(events);
    const RawClass event = makeRecordClass("VelmoEventDouble");
    setMethod<"type", &eventType>(event);
    setMethod<"modifierFlags", &eventModifiers>(event);
    setMethod<"windowNumber", &eventWindow>(event);
    setMethod<"scrollingDeltaX", &eventDeltaX>(event);
    setMethod<"scrollingDeltaY", &eventDeltaY>(event);
    setMethod<"keyCode", &eventKeyCode>(event);
    setMethod<"charactersIgnoringModifiers", &eventCharacters>(event);
    setMethod<"eventNumber", &eventNumber>(event);
    objc_registerClassPair(event);
}

NSEvent makeEvent(const Event& event) {
    const Object made = makeRecord("VelmoEventDouble");
    setMember(made, "type", static_cast<double>(event.type));
    setMember(made, "modifiers", static_cast<double>(event.modifierFlags));
    setMember(made, "window", static_cast<double>(event.windowNumber));
    if (event.type == EventType::scrollWheel) {
        setMember(made, "deltaX", event.scrollingDeltaX);
        setMember(made, "deltaY", event.scrollingDeltaY);
    } else if (event.type == EventType::keyDown) {
        setMember(made, "keyCode", event.keyCode);
        if (event.charactersIgnoringModifiers)
            setMember(made, "characters", NSString::from(*event.charactersIgnoringModifiers));
    } else if (event.type < EventType::mouseMoved || event.type >= EventType::otherMouseDown) {
        setMember(made, "number", static_cast<double>(event.eventNumber));
    }
    return Object::share<NSEvent>(made.get());
}

void tellGlobalMonitors(const NSEvent& event) {
    const auto monitors = system().monitors;
    for (const InstalledMonitor& monitor : monitors) {
        if (!monitor.isLocal && (monitor.mask >> static_cast<unsigned>(event.type()) & 1) != 0)
            callBlock<void>(monitor.handler, event.get());
    }
}

NSEvent tellLocalMonitors(const NSEvent& event) {
    NSEvent current = event;
    const auto monitors = system().monitors;
    for (const InstalledMonitor& monitor : monitors) {
        if (current && monitor.isLocal && (monitor.mask >> static_cast<unsigned>(event.type()) & 1) != 0)
            current = Object::share<NSEvent>(callBlock<Id>(monitor.handler, current.get()));
    }
    return current;
}

}  // namespace doubles
}  // namespace velmo::macos
