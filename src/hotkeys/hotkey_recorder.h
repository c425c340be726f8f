#pragma once

#include "platform/events.h"
#include "platform/lifetime.h"
#include "preferences/published.h"

namespace velmo {

/// Waits for the key press that is to become a shortcut. It sees the keys that go to this application, and
/// keeps them from going further.
class HotkeyRecorder {
public:
    /// Key code, modifiers as in the modifier flags of events, and what the user reads.
    using Completion =
        std::function<void(std::uint16_t keyCode, ModifierFlags modifiers, const std::string& display)>;

    explicit HotkeyRecorder(Events& events) : events_(events) {}
    HotkeyRecorder(const HotkeyRecorder&) = delete;
    HotkeyRecorder& operator=(const HotkeyRecorder&) = delete;
    ~HotkeyRecorder();

    Published<bool> isRecording;

    /// Calls the completion with the first key press that can be a shortcut, and stops then. Escape stops
    /// without calling it.
    void start(Completion completion);
    void stop();

private:
    EventDisposition keyPressed(const Event& event, const Completion& completion);

    Events& events_;
    std::unique_ptr<EventMonitor> monitor_;
    Lifetime lifetime_;
};

}  // namespace velmo
