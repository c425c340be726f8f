#pragma once

#include "events.h"
#include "linux/current_event.h"
#include "linux/listeners.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace velmo {

/// Presses and keys in the program's own windows, panels and status items, on their way there. Whoever gets
/// them from the display asks here first.
class LocalEvents {
public:
    using Handler = std::function<EventDisposition(const Event&)>;
    /// Makes a `keyDown` of the display's code for the key and its state of the modifiers. Absent for keys
    /// that have no virtual key code, the modifiers among them.
    using KeyTranslation = std::function<std::optional<Event>(std::uint32_t keycode, std::uint32_t state)>;

    explicit LocalEvents(CurrentEvent& currentEvent) : currentEvent_(currentEvent) {}
    LocalEvents(const LocalEvents&) = delete;
    LocalEvents& operator=(const LocalEvents&) = delete;

    /// Sees the events of the mask until the result is destroyed.
    std::unique_ptr<EventMonitor> addMonitor(EventMask mask, Handler handler) {
        return std::make_unique<Monitor>(*this, std::make_shared<Entry>(Entry{mask, std::move(handler)}));
    }
    bool isMonitored(EventType type) const {
        return std::any_of(entries_.begin(), entries_.end(),
                           [type](const auto& entry) { return (entry->mask & maskOf(type)) != 0; });
    }

    /// Shows the event to the monitors that want it, in the order of their making. Where one of them swallows
    /// it, it must not arrive.
    EventDisposition deliver(const Event& event) {
        // A copy, because monitors come and go while they are called.
        const auto called = entries_;
        for (const auto& entry : called) {
            if (entry->ended || (entry->mask & maskOf(event.type)) == 0)
                continue;
            auto disposition = EventDisposition::pass;
            currentEvent_.during(event, [&] { disposition = entry->handler(event); });
            if (disposition == EventDisposition::swallow)
                return EventDisposition::swallow;
        }
        return EventDisposition::pass;
    }

    /// A mouse button went down in one of our own windows at this time of the display's clock: other
    /// applications do not get that press. Returns its number, which no other press has.
    std::int64_t notePress(std::uint32_t time) {
        lastPress_ = time;
        lastPressAnywhere_ = time;
        return ++presses_;
    }
    /// The same of another application's window. Known only while somebody monitors that.
    void notePressElsewhere(std::uint32_t time) { lastPressAnywhere_ = time; }
    std::optional<std::uint32_t> lastPressAnywhere() const { return lastPressAnywhere_; }
    bool wasPressedAt(std::uint32_t time) const { return lastPress_ == time; }

    /// For as long as the result lives, a panel is on the screen, which never has the keyboard.
    [[nodiscard]] Registration addPanel() {
        ++panels_;
        changes_.notify();
        return Registration([this] {
            --panels_;
            changes_.notify();
        });
    }
    bool showsPanel() const { return panels_ > 0; }

    void setKeyTranslation(KeyTranslation translation) { keyTranslation_ = std::move(translation); }
    /// A key that was pressed in one of our windows, as `keyDown`.
    std::optional<Event> keyDown(std::uint32_t keycode, std::uint32_t state,
                                 WindowNumber windowNumber) const {
        auto event = keyTranslation_ ? keyTranslation_(keycode, state) : std::nullopt;
        if (event)
            event->windowNumber = windowNumber;
        return event;
    }

    /// Called after monitors or panels have come or gone.
    Registration onChange(std::function<void()> listener) { return changes_.add(std::move(listener)); }

private:
    struct Entry {
        EventMask mask = 0;
        Handler handler;
        bool ended = false;
    };

    class Monitor : public EventMonitor {
    public:
        Monitor(LocalEvents& events, std::shared_ptr<Entry> entry)
            : events_(events), entry_(std::move(entry)) {
            events_.entries_.push_back(entry_);
            events_.changes_.notify();
        }
        ~Monitor() override {
            entry_->ended = true;
            std::erase(events_.entries_, entry_);
            events_.changes_.notify();
        }
        Monitor(const Monitor&) = delete;
        Monitor& operator=(const Monitor&) = delete;

    private:
        LocalEvents& events_;
        std::shared_ptr<Entry> entry_;
    };

    CurrentEvent& currentEvent_;
    std::vector<std::shared_ptr<Entry>> entries_;
    std::optional<std::uint32_t> lastPress_;
    std::optional<std::uint32_t> lastPressAnywhere_;
    std::int64_t presses_ = 0;
    std::size_t panels_ = 0;
    KeyTranslation keyTranslation_;
    Listeners changes_;
};

}  // namespace velmo
