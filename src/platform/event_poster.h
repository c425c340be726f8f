#pragma once

#include "event.h"
#include "geometry.h"

namespace velmo {

/// Makes input events as if the user had made them.
class EventPoster {
public:
    virtual ~EventPoster() = default;

    /// Posts `mouseMoved`, or a press or release of the left button, at a point: origin at the top left of
    /// the primary screen, y downwards. Does nothing where the event cannot be made.
    virtual void postMouseEvent(EventType type, const Point& location) = 0;
};

}  // namespace velmo
