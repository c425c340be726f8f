#pragma once

#include "event_poster.h"
#include "run_loop.h"

#include <vector>

namespace velmo {

/// Keeps what is posted instead of performing it.
class SimulatedEventPoster : public EventPoster {
public:
    struct Posted {
        EventType type = EventType::mouseMoved;
        Point location;
        Date time = 0;

        bool operator==(const Posted&) const = default;
    };

    explicit SimulatedEventPoster(const RunLoop& runLoop) : runLoop_(runLoop) {}

    void postMouseEvent(EventType type, const Point& location) override {
        posted_.push_back({type, location, runLoop_.now()});
    }

    const std::vector<Posted>& posted() const { return posted_; }

private:
    const RunLoop& runLoop_;
    std::vector<Posted> posted_;
};

}  // namespace velmo
