#include "hotkeys/hotkey_recorder.h"

#include "hotkeys/hotkey_display.h"

#include <vector>

namespace velmo {

namespace {

constexpr ModifierFlags recordedModifiers =
    modifier::shift | modifier::control | modifier::option | modifier::command;

/// Function keys and the keys that move by pages, which may be a shortcut by themselves.
constexpr std::uint16_t firstBareKey = 96;
constexpr std::uint16_t lastBareKey = 122;

bool canBeBare(std::uint16_t keyCode) {
    return keyCode >= firstBareKey && keyCode <= lastBareKey;
}

/// Never taken down.
std::vector<std::unique_ptr<EventMonitor>>& monitorsLeftBehind() {
    static auto* const monitors = new std::vector<std::unique_ptr<EventMonitor>>;
    return *monitors;
}

}  // namespace

// A monitor that still waits stays where it is: without its recorder it lets everything pass.
HotkeyRecorder::~HotkeyRecorder() {
    if (monitor_)
        monitorsLeftBehind().push_back(std::move(monitor_));
}

void HotkeyRecorder::start(Completion completion) {
    isRecording.set(true);
    auto handle = lifetime_.guard(
        [this, completion = std::move(completion)](const Event& event, EventDisposition& disposition) {
            disposition = keyPressed(event, completion);
        });
    monitor_ = events_.addLocalMonitor(maskOf(EventType::keyDown),
                                       [handle = std::move(handle)](const Event& event) mutable {
                                           auto disposition = EventDisposition::pass;
                                           handle(event, disposition);
                                           return disposition;
                                       });
}

void HotkeyRecorder::stop() {
    monitor_.reset();
    isRecording.set(false);
}

EventDisposition HotkeyRecorder::keyPressed(const Event& event, const Completion& completion) {
    const ModifierFlags modifiers = event.modifierFlags & recordedModifiers;
    if (event.keyCode != escapeKeyCode) {
        if (modifiers == 0 && !canBeBare(event.keyCode))
            return EventDisposition::swallow;
        completion(event.keyCode, modifiers, hotkeyDisplay(event));
    }
    stop();
    return EventDisposition::swallow;
}

}  // namespace velmo
