#pragma once

#include "event_poster.h"
#include "macos/objc/object.h"

namespace velmo::macos {

class MacosEventPoster : public EventPoster {
public:
    void postMouseEvent(EventType type, const Point& location) override;

private:
    /// Of one click: its move, its press and its release.
    Object source_;
};

}  // namespace velmo::macos
