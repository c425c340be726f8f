#include "simulated/simulated_desktop.h"

#include <utility>

namespace velmo {

namespace {

EventType pressType(MouseButton button) {
    return button == MouseButton::left ? EventType::leftMouseDown : EventType::rightMouseDown;
}

EventType releaseType(MouseButton button) {
    return button == MouseButton::left ? EventType::leftMouseUp : EventType::rightMouseUp;
}

}  // namespace

Platform SimulatedDesktop::platform() {
    return {application_, runLoop_,      userDefaults_, processInfo_,   statusBar_,         screens_,
            events_,      windowServer_, hotKeys_,      screenCapture_, accessibility_,     eventPoster_,
            windows_,     workspace_,    dates_,        loginService_,  globalPreferences_, session_};
}

void SimulatedDesktop::movePointer(const Point& location) {
    events_.setMouseLocation(location);
    statusBar_.pointerMoved(location, application_);
}

SimulatedStatusItem* SimulatedDesktop::reachableItem(std::string_view autosaveName) {
    const auto* slot = statusBar_.slot(autosaveName);
    return slot != nullptr && statusBar_.isOnScreen(*slot) ? slot->own : nullptr;
}

bool SimulatedDesktop::press(std::string_view autosaveName, MouseButton button, ModifierFlags flags) {
    auto* item = reachableItem(autosaveName);
    if (item != nullptr)
        pressItem(*item, button, flags);
    return item != nullptr;
}

bool SimulatedDesktop::release(std::string_view autosaveName, MouseButton button, ModifierFlags flags) {
    auto* item = reachableItem(autosaveName);
    if (item != nullptr)
        releaseItem(item, button, flags);
    return item != nullptr;
}

bool SimulatedDesktop::click(std::string_view autosaveName, MouseButton button, ModifierFlags flags) {
    return press(autosaveName, button, flags) && release(autosaveName, button, flags);
}

void SimulatedDesktop::pressAtPointer(MouseButton button, ModifierFlags flags) {
    if (auto* item = statusBar_.itemAt(events_.mouseLocation())) {
        pressItem(*item, button, flags);
        return;
    }
    pressOf(button) = {};
    if (const auto* panel = windows_.panelAt(events_.mouseLocation()))
        events_.deliverLocally({pressType(button), flags, 0, 0, panel->windowNumber()});
    else
        events_.deliver({pressType(button), flags});
}

void SimulatedDesktop::releaseAtPointer(MouseButton button, ModifierFlags flags) {
    // A release goes where its press went.
    if (pressOf(button).window != 0)
        releaseItem(statusBar_.itemAt(events_.mouseLocation()), button, flags);
    else
        events_.deliver({releaseType(button), flags});
}

void SimulatedDesktop::clickAtPointer(MouseButton button, ModifierFlags flags) {
    pressAtPointer(button, flags);
    releaseAtPointer(button, flags);
}

void SimulatedDesktop::scrollAtPointer(double deltaX, double deltaY) {
    if (statusBar_.itemAt(events_.mouseLocation()) == nullptr)
        events_.deliver({EventType::scrollWheel, 0, deltaX, deltaY});
}

bool SimulatedDesktop::pressKey(std::uint16_t keyCode) {
    const auto* panel = windows_.visiblePanel();
    return panel == nullptr ||
           events_.deliverLocally({EventType::keyDown, 0, 0, 0, panel->windowNumber(), keyCode});
}

void SimulatedDesktop::pressItem(SimulatedStatusItem& item, MouseButton button, ModifierFlags flags) {
    const auto window = statusBar_.windowNumber(item);
    pressOf(button) = {window, ++pressCount_};
    const Event press{pressType(button), flags, 0, 0, window, 0, {}, pressCount_};
    if (!events_.deliverLocally(press))
        pressOf(button) = {};
    else if (auto* face = item.button())
        face->press(press, application_);
}

void SimulatedDesktop::releaseItem(SimulatedStatusItem* item, MouseButton button, ModifierFlags flags) {
    const auto pressed = std::exchange(pressOf(button), {});
    if (item == nullptr)
        return;
    const auto window = statusBar_.windowNumber(*item);
    if (auto* face = item->button())
        face->release({releaseType(button), flags, 0, 0, window, 0, {}, pressed.number},
                      window == pressed.window, application_);
}

}  // namespace velmo
