#include "simulated/simulated_timer.h"

#include "simulated/simulated_run_loop.h"

namespace velmo {

SimulatedTimer::SimulatedTimer(SimulatedRunLoop& runLoop, Key key, std::function<void()> work,
                               std::int64_t interval, Seconds tolerance)
    : runLoop_(&runLoop),
      key_(std::move(key)),
      work_(std::move(work)),
      interval_(interval),
      tolerance_(tolerance) {}

void SimulatedTimer::invalidate() {
    auto* runLoop = std::exchange(runLoop_, nullptr);
    if (runLoop == nullptr)
        return;
    // The loop's reference may be the last one.
    const auto work = std::exchange(work_, nullptr);
    runLoop->timers_.erase(key_);
}

}  // namespace velmo
