#include "simulated/simulated_run_loop.h"

#include <algorithm>
#include <cmath>

namespace velmo {

namespace {

constexpr double nanosecondsPerSecond = 1e9;

/// What is no number counts as 0, what is longer than a century as that.
std::int64_t nanoseconds(Seconds seconds) {
    constexpr Seconds longest = 3.2e9;
    if (!(seconds > 0))
        return 0;
    return std::llround(std::min(seconds, longest) * nanosecondsPerSecond);
}

Seconds toSeconds(std::int64_t nanoseconds) {
    return static_cast<Seconds>(nanoseconds) / nanosecondsPerSecond;
}

}  // namespace

SimulatedRunLoop::~SimulatedRunLoop() {
    for (const auto& [key, timer] : timers_)
        timer->runLoop_ = nullptr;
}

Date SimulatedRunLoop::now() const {
    return dateAtStart_ + toSeconds(elapsed_);
}

void SimulatedRunLoop::post(std::function<void()> work) {
    posted_.push_back(std::move(work));
}

std::shared_ptr<Timer> SimulatedRunLoop::schedule(Seconds interval, std::function<void()> work) {
    const SimulatedTimer::Key key{elapsed_ + nanoseconds(interval), sequence_++};
    auto timer = std::make_shared<SimulatedTimer>(*this, key, std::move(work));
    timers_.emplace(key, timer);
    return timer;
}

std::shared_ptr<Timer> SimulatedRunLoop::scheduleRepeating(Seconds interval, Seconds tolerance,
                                                           std::function<void()> work) {
    // An interval of nothing would never let the clock move on.
    const auto step = std::max<std::int64_t>(nanoseconds(interval), 1);
    const SimulatedTimer::Key key{elapsed_ + step, sequence_++};
    auto timer = std::make_shared<SimulatedTimer>(*this, key, std::move(work), step, tolerance);
    timers_.emplace(key, timer);
    return timer;
}

void SimulatedRunLoop::runPosted() {
    while (!posted_.empty()) {
        const auto work = std::move(posted_.front());
        posted_.pop_front();
        work();
    }
}

void SimulatedRunLoop::advance(Seconds seconds) {
    const std::int64_t end = elapsed_ + nanoseconds(seconds);
    runPosted();
    while (!timers_.empty() && timers_.begin()->first.first <= end)
        runEarliestTimer();
    // A timer's work may have let more time pass than this.
    elapsed_ = std::max(elapsed_, end);
}

bool SimulatedRunLoop::runUntilIdle(Seconds limit) {
    const std::int64_t end = elapsed_ + nanoseconds(limit);
    runPosted();
    while (!timers_.empty() && timers_.begin()->first.first <= end)
        runEarliestTimer();
    return timers_.empty();
}

bool SimulatedRunLoop::fireNextTimer() {
    if (timers_.empty())
        return false;
    fireEarliestTimer();
    return true;
}

void SimulatedRunLoop::runEarliestTimer() {
    fireEarliestTimer();
    runPosted();
}

void SimulatedRunLoop::fireEarliestTimer() {
    const auto earliest = timers_.begin();
    const auto timer = earliest->second;
    elapsed_ = std::max(elapsed_, earliest->first.first);
    timers_.erase(earliest);
    if (timer->interval_ > 0) {
        timer->key_ = {timer->key_.first + timer->interval_, sequence_++};
        timers_.emplace(timer->key_, timer);
        // A copy: the work may invalidate its own timer.
        const auto work = timer->work_;
        work();
        return;
    }
    timer->runLoop_ = nullptr;
    const auto work = std::exchange(timer->work_, nullptr);
    work();
}

Seconds SimulatedRunLoop::elapsed() const {
    return toSeconds(elapsed_);
}

void SimulatedRunLoop::setNow(Date date) {
    dateAtStart_ = date - toSeconds(elapsed_);
}

std::vector<Seconds> SimulatedRunLoop::tolerances() const {
    std::vector<Seconds> tolerances;
    for (const auto& [key, timer] : timers_)
        tolerances.push_back(timer->tolerance_);
    return tolerances;
}

std::optional<Seconds> SimulatedRunLoop::nextTimer() const {
    if (timers_.empty())
        return std::nullopt;
    return toSeconds(timers_.begin()->first.first - elapsed_);
}

}  // namespace velmo
