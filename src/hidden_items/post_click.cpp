#include "hidden_items/post_click.h"

#include "async/sleep.h"
#include "platform/event_poster.h"

namespace velmo {

namespace {

constexpr Seconds eventDistance = 0.04;
constexpr Seconds returnDelay = 0.08;

/// Holds the button down. It comes up whatever becomes of the task that presses it.
class Press {
public:
    Press(EventPoster& poster, const Point& point) : poster_(poster), point_(point) {
        poster_.postMouseEvent(EventType::leftMouseDown, point_);
    }
    Press(const Press&) = delete;
    Press& operator=(const Press&) = delete;
    ~Press() { poster_.postMouseEvent(EventType::leftMouseUp, point_); }

private:
    EventPoster& poster_;
    Point point_;
};

}  // namespace

Task<> postClick(Point point, std::optional<Point> returnPoint, Platform platform) {
    platform.eventPoster.postMouseEvent(EventType::mouseMoved, point);
    co_await Sleep(platform.runLoop, eventDistance);
    {
        const Press press(platform.eventPoster, point);
        co_await Sleep(platform.runLoop, eventDistance);
    }
    if (!returnPoint)
        co_return;
    co_await Sleep(platform.runLoop, returnDelay);
    platform.eventPoster.postMouseEvent(EventType::mouseMoved, *returnPoint);
}

}  // namespace velmo
