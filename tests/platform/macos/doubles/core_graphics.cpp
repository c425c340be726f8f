#include "macos/core_graphics/events.h"
#include "macos/core_graphics/window_list.h"
#include "macos/foundation/ns_number.h"
#include "platform/macos/doubles/double_system.h"

namespace velmo::macos {
namespace {

/// Events and their sources are dictionaries here.
NSMutableDictionary recordWith(const char* key, double value) {
    NSMutableDictionary record = NSMutableDictionary::create();
    record.setObject(NSNumber::with(value), NSString::from(key));
    return record;
}

double numberOf(Id record, const char* key) {
    return as<NSNumber>(Object::share<NSDictionary>(record).objectForKey(NSString::from(key))).doubleValue();
}

}  // namespace

namespace core_graphics {

extern "C" {
const Id kCGWindowNumber = NSString::from("kCGWindowNumber").leave();
const Id kCGWindowLayer = NSString::from("kCGWindowLayer").leave();
const Id kCGWindowOwnerPID = NSString::from("kCGWindowOwnerPID").leave();
const Id kCGWindowOwnerName = NSString::from("kCGWindowOwnerName").leave();
const Id kCGWindowName = NSString::from("kCGWindowName").leave();
const Id kCGWindowBounds = NSString::from("kCGWindowBounds").leave();
const Id kCGWindowIsOnscreen = NSString::from("kCGWindowIsOnscreen").leave();

Id CGWindowListCopyWindowInfo(CGWindowListOption option, std::uint32_t relativeToWindow) {
    doubles::system().windowListOption = static_cast<std::uint32_t>(option);
    doubles::system().relativeToWindow = relativeToWindow;
    return doubles::system().windowList ? NSArray(*doubles::system().windowList).leave() : nullptr;
}

bool CGRectMakeWithDictionaryRepresentation(Id dictionary, CGRect* rect) {
    for (const char* key : {"X", "Y", "Width", "Height"}) {
        if (!Object::share<NSDictionary>(dictionary).objectForKey(NSString::from(key)))
            return false;
    }
    *rect = {{numberOf(dictionary, "X"), numberOf(dictionary, "Y")},
             {numberOf(dictionary, "Width"), numberOf(dictionary, "Height")}};
    return true;
}

bool CGPreflightScreenCaptureAccess() {
    return doubles::system().mayCapture;
}

bool CGRequestScreenCaptureAccess() {
    ++doubles::system().captureRequests;
    return doubles::system().mayCapture;
}

Id CGEventSourceCreate(CGEventSourceStateID state) {
    ++doubles::system().eventSources;
    return recordWith("state", static_cast<double>(state)).leave();
}

Id CGEventCreateMouseEvent(Id source, CGEventType type, CGPoint location, CGMouseButton button) {
    if (!doubles::system().makesEvents)
        return nullptr;
    NSMutableDictionary event = recordWith("state", numberOf(source, "state"));
    event.setObject(NSNumber::with(static_cast<double>(type)), NSString::from("type"));
    event.setObject(NSNumber::with(location.x), NSString::from("x"));
    event.setObject(NSNumber::with(location.y), NSString::from("y"));
    event.setObject(NSNumber::with(static_cast<double>(button)), NSString::from("button"));
    return event.leave();
}

void CGEventPost(CGEventTapLocation tap, Id event) {
    doubles::system().postedEvents.push_back(
        {.sourceState = static_cast<std::int32_t>(numberOf(event, "state")),
         .type = static_cast<std::uint32_t>(numberOf(event, "type")),
         .location = {numberOf(event, "x"), numberOf(event, "y")},
         .button = static_cast<std::uint32_t>(numberOf(event, "button")),
         .tap = static_cast<std::uint32_t>(tap)});
}
}

}  // namespace core_graphics
}  // namespace velmo::macos
