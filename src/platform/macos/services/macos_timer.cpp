#include "macos_timer.h"

#include "macos/foundation/ns_run_loop.h"

#include <utility>

namespace velmo::macos {

std::shared_ptr<MacosTimer> MacosTimer::once(Seconds interval, std::function<void()> work) {
    return add(interval, false, std::move(work));
}

std::shared_ptr<MacosTimer> MacosTimer::repeating(Seconds interval, Seconds tolerance,
                                                  std::function<void()> work) {
    auto timer = add(interval, true, std::move(work));
    timer->timer_.setTolerance(tolerance);
    return timer;
}

std::shared_ptr<MacosTimer> MacosTimer::add(Seconds interval, bool repeats, std::function<void()> work) {
    const std::shared_ptr<MacosTimer> timer(new MacosTimer(repeats, std::move(work)));
    timer->timer_ =
        NSTimer::with(interval, repeats, Block<void(NSTimer)>([timer](const NSTimer&) { fire(timer); }));
    NSRunLoop::main().add(timer->timer_, commonRunLoopModes.value());
    return timer;
}

// By value: the system may let go of its block, which holds another reference, while the work runs.
void MacosTimer::fire(std::shared_ptr<MacosTimer> timer) {
    if (!timer->isValid_)
        return;
    const auto work = timer->work_;
    if (!timer->repeats_)
        timer->invalidate();
    work();
}

void MacosTimer::invalidate() {
    isValid_ = false;
    work_ = nullptr;
    // The system's timer holds the block, which holds this.
    const NSTimer ended = std::exchange(timer_, {});
    ended.invalidate();
}

}  // namespace velmo::macos
