#pragma once

#include "event.h"

#include <optional>
#include <utility>

namespace velmo {

/// The event being handled, for as long as it is handled.
class CurrentEvent {
public:
    const std::optional<Event>& get() const { return event_; }

    template <typename Handling>
    void during(const Event& event, const Handling& handling) {
        const auto outer = std::exchange(event_, event);
        handling();
        event_ = outer;
    }

private:
    std::optional<Event> event_;
};

}  // namespace velmo
