#pragma once

#include "event_poster.h"

namespace velmo::macos {

class MacosEventPoster : public EventPoster {
public:
    void postMouseEvent(EventType type, const Point& location) override;
};

}  // namespace velmo::macos
