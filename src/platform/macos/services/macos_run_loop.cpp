#include "macos_run_loop.h"

#include "macos_timer.h"

#include <chrono>
#include <utility>

namespace velmo::macos {

MacosRunLoop::~MacosRunLoop() {
    if (turn_)
        turn_->invalidate();
}

Date MacosRunLoop::now() const {
    return std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count();
}

void MacosRunLoop::post(std::function<void()> work) {
    posted_.push_back(std::move(work));
    if (!turn_)
        turn_ = MacosTimer::once(0, [this] { runPosted(); });
}

void MacosRunLoop::runPosted() {
    turn_.reset();
    const auto work = std::move(posted_.front());
    posted_.pop_front();
    // Asked for before the work runs, which may open a menu: what is left goes on meanwhile.
    if (!posted_.empty())
        turn_ = MacosTimer::once(0, [this] { runPosted(); });
    work();
}

std::shared_ptr<Timer> MacosRunLoop::schedule(Seconds interval, std::function<void()> work) {
    return MacosTimer::once(interval, std::move(work));
}

std::shared_ptr<Timer> MacosRunLoop::scheduleRepeating(Seconds interval, Seconds tolerance,
                                                       std::function<void()> work) {
    return MacosTimer::repeating(interval, tolerance, std::move(work));
}

}  // namespace velmo::macos
