#include "macos_event_poster.h"

#include "macos/core_graphics/events.h"

namespace velmo::macos {

void MacosEventPoster::postMouseEvent(EventType type, const Point& location) {
    // A click begins with the pointer's way to it.
    if (type == EventType::mouseMoved || !source_)
        source_ = core_graphics::createEventSource(CGEventSourceStateID::hidSystemState);
    const Object event = core_graphics::createMouseEvent(
        source_.get(), static_cast<CGEventType>(type), CGPoint{location.x, location.y}, CGMouseButton::left);
    if (event)
        core_graphics::postEvent(CGEventTapLocation::hid, event.get());
}

}  // namespace velmo::macos
