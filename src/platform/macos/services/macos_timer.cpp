#include "macos_timer.h"

#include "macos/foundation/ns_run_loop.h"
#include "macos/objc/autorelease_pool.h"

#include <utility>

namespace velmo::macos {

MacosTimer::MacosTimer(Seconds interval, bool repeats, std::function<void()> work)
    : interval_(interval),
      repeats_(repeats),
      work_(std::move(work)),
      timer_(NSTimer::with(interval, repeats,
                           Block<void(NSTimer)>([this](const NSTimer& /*timer*/) { fire(); }))) {}

std::shared_ptr<MacosTimer> MacosTimer::once(Seconds interval, std::function<void()> work) {
    return add(std::shared_ptr<MacosTimer>(new MacosTimer(interval, false, std::move(work))));
}

std::shared_ptr<MacosTimer> MacosTimer::repeating(Seconds interval, Seconds tolerance,
                                                  std::function<void()> work) {
    const std::shared_ptr<MacosTimer> timer(new MacosTimer(interval, true, std::move(work)));
    timer->timer_.setTolerance(tolerance);
    return add(timer);
}

std::shared_ptr<MacosTimer> MacosTimer::add(std::shared_ptr<MacosTimer> timer) {
    timer->self_ = timer;
    // What is due at once is not slowed down.
    if (timer->interval_ > 0)
        timer->activity_ = Activity::shared();
    NSRunLoop::main().add(timer->timer_, commonRunLoopModes.value());
    return timer;
}

void MacosTimer::fire() {
    if (!isValid())
        return;
    // A copy, because the work may invalidate the timer, and that may be the end of this.
    const auto work = work_;
    // While no events come, the application lets go of nothing.
    const AutoreleasePool pool;
    if (!repeats_)
        invalidate();
    work();
}

void MacosTimer::invalidate() {
    const auto self = std::exchange(self_, nullptr);
    if (!self)
        return;
    work_ = nullptr;
    timer_.invalidate();
    activity_.reset();
}

}  // namespace velmo::macos
