#include "event_from.h"

namespace velmo::macos {
namespace {

bool isMouseButton(EventType type) {
    switch (type) {
        case EventType::leftMouseDown:
        case EventType::leftMouseUp:
        case EventType::rightMouseDown:
        case EventType::rightMouseUp:
        case EventType::otherMouseDown:
        case EventType::otherMouseUp:
            return true;
        default:
            return false;
    }
}

}  // namespace

Event eventFrom(const NSEvent& event) {
    Event made{.type = static_cast<EventType>(event.type()),
               .modifierFlags = static_cast<ModifierFlags>(event.modifierFlags()),
               .windowNumber = event.windowNumber()};
    // Asking an event of another kind for these ends the program.
    if (made.type == EventType::scrollWheel) {
        made.scrollingDeltaX = event.scrollingDeltaX();
        made.scrollingDeltaY = event.scrollingDeltaY();
    } else if (made.type == EventType::keyDown) {
        made.keyCode = event.keyCode();
        if (const NSString characters = event.charactersIgnoringModifiers())
            made.charactersIgnoringModifiers = characters.text();
    } else if (isMouseButton(made.type)) {
        made.eventNumber = event.eventNumber();
    }
    return made;
}

}  // namespace velmo::macos
