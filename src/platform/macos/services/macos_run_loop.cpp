#include "macos_run_loop.h"

#include "macos/foundation/main_thread.h"
#include "macos_timer.h"

#include <chrono>
#include <utility>

namespace velmo::macos {

Date MacosRunLoop::now() const {
    return std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count();
}

void MacosRunLoop::post(std::function<void()> work) {
    runOnMainThread(lifetime_.guard(std::move(work)));
}

std::shared_ptr<Timer> MacosRunLoop::schedule(Seconds interval, std::function<void()> work) {
    return MacosTimer::once(interval, std::move(work));
}

std::shared_ptr<Timer> MacosRunLoop::scheduleRepeating(Seconds interval, Seconds tolerance,
                                                       std::function<void()> work) {
    return MacosTimer::repeating(interval, tolerance, std::move(work));
}

}  // namespace velmo::macos
