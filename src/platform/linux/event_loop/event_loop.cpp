#include "event_loop.h"

#include <sys/epoll.h>
#include <sys/timerfd.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <ctime>
#include <limits>
#include <system_error>
#include <utility>
#include <vector>

namespace velmo {

struct EventLoop::Scheduled : Timer {
    void invalidate() override { work = nullptr; }
    bool isValid() const override { return work != nullptr; }

    std::function<void()> work;
    /// 0: runs once.
    Seconds interval = 0;
    Seconds tolerance = 0;
};

namespace {

/// A century: more than any process lives, and less than the kernel's clocks can count.
constexpr Seconds longestInterval = 3.2e9;
constexpr int noWait = 0;
constexpr int untilSomethingHappens = -1;

Seconds secondsOf(clockid_t clock) {
    timespec time{};
    clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

Seconds monotonicTime() {
    return secondsOf(CLOCK_MONOTONIC);
}

int checked(int descriptor) {
    if (descriptor < 0)
        throw std::system_error(errno, std::generic_category(), "event loop");
    return descriptor;
}

void watch(int poll, int descriptor) {
    epoll_event event{};
    event.events = EPOLLIN;
    event.data.fd = descriptor;
    checked(epoll_ctl(poll, EPOLL_CTL_ADD, descriptor, &event));
}

}  // namespace

EventLoop::EventLoop()
    : poll_(checked(epoll_create1(EPOLL_CLOEXEC))),
      timer_(checked(timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC | TFD_NONBLOCK))) {
    watch(poll_, timer_);
}

EventLoop::~EventLoop() {
    close(timer_);
    close(poll_);
}

Date EventLoop::now() const {
    return secondsOf(CLOCK_REALTIME);
}

void EventLoop::post(std::function<void()> work) {
    posted_.push_back(std::move(work));
}

std::shared_ptr<Timer> EventLoop::schedule(Seconds interval, std::function<void()> work) {
    auto scheduled = std::make_shared<Scheduled>();
    scheduled->work = std::move(work);
    const Seconds wait = interval > 0 ? std::min(interval, longestInterval) : 0;
    pending_.emplace(monotonicTime() + wait, scheduled);
    return scheduled;
}

std::shared_ptr<Timer> EventLoop::scheduleRepeating(Seconds interval, Seconds tolerance,
                                                    std::function<void()> work) {
    constexpr Seconds shortestInterval = 0.001;
    auto scheduled = std::make_shared<Scheduled>();
    scheduled->work = std::move(work);
    scheduled->interval = std::clamp(interval, shortestInterval, longestInterval);
    scheduled->tolerance = std::clamp(tolerance, 0.0, scheduled->interval);
    pending_.emplace(nextBeat(scheduled->interval), scheduled);
    return scheduled;
}

/// With what is repeated as often, where there is such a thing; else an interval from now.
Seconds EventLoop::nextBeat(Seconds interval) const {
    const Seconds time = monotonicTime();
    const auto other = std::find_if(pending_.begin(), pending_.end(), [&](const auto& pending) {
        return pending.second->isValid() && pending.second->interval == interval;
    });
    if (other == pending_.end())
        return time + interval;
    const Seconds due = other->first;
    return due > time ? due : due + (std::floor((time - due) / interval) + 1) * interval;
}

Registration EventLoop::addSource(int fileDescriptor, std::function<void()> onReadable) {
    auto source = std::make_shared<Source>();
    source->fileDescriptor = fileDescriptor;
    source->onReadable = std::move(onReadable);
    watch(poll_, fileDescriptor);
    const auto place = sources_.insert(sources_.end(), source);
    return Registration([this, place] {
        epoll_ctl(poll_, EPOLL_CTL_DEL, (*place)->fileDescriptor, nullptr);
        (*place)->ended = true;
        sources_.erase(place);
    });
}

Registration EventLoop::addBeforeSleep(std::function<void()> work) {
    return beforeSleep_.add(std::move(work));
}

void EventLoop::run() {
    running_ = true;
    runWhile([] { return true; });
}

void EventLoop::runWhile(const std::function<bool()>& condition) {
    while (running_ && condition()) {
        if (host_) {
            host_->runWhile([&] { return running_ && condition(); });
            continue;
        }
        turn();
        const bool nothingToDo = prepareToSleep();
        // A host that has come in this turn does the sleeping.
        if (!host_ && running_ && condition() && nothingToDo)
            dispatchSources(untilSomethingHappens);
    }
}

void EventLoop::stop() {
    running_ = false;
    if (host_)
        host_->interrupt();
}

void EventLoop::turn() {
    dispatchSources(noWait);
    // What the events have asked for follows at once, however the loop sleeps.
    runPosted();
    runDueTimers();
}

bool EventLoop::prepareToSleep() {
    beforeSleep_.notify();
    armTimer();
    return posted_.empty();
}

void EventLoop::runPosted() {
    // Work that is posted meanwhile waits for the next turn. One at a time, because work may run the loop.
    for (auto count = posted_.size(); count > 0 && !posted_.empty(); --count) {
        const auto work = std::move(posted_.front());
        posted_.pop_front();
        work();
    }
}

void EventLoop::runDueTimers() {
    const Seconds time = monotonicTime();
    while (!pending_.empty()) {
        const auto first = pending_.begin();
        const bool valid = first->second->isValid();
        if (valid && first->first > time)
            return;
        const auto scheduled = first->second;
        const Seconds due = first->first;
        pending_.erase(first);
        if (!valid)
            continue;
        if (scheduled->interval == 0) {
            std::exchange(scheduled->work, nullptr)();
            continue;
        }
        // On the beat of its making; beats that were slept through are left out.
        const Seconds missed = std::floor((time - due) / scheduled->interval);
        pending_.emplace(due + (missed + 1) * scheduled->interval, scheduled);
        // A copy: the work may invalidate its own timer.
        const auto work = scheduled->work;
        work();
    }
}

// As late as all timers bear it, if another one is due by then: one awakening serves both.
Seconds EventLoop::deadline() const {
    Seconds latest = std::numeric_limits<Seconds>::infinity();
    Seconds chosen = 0;
    for (const auto& [due, scheduled] : pending_) {
        if (due > latest)
            break;
        if (!scheduled->isValid())
            continue;
        chosen = due;
        latest = std::min(latest, due + scheduled->tolerance);
    }
    return chosen;
}

void EventLoop::armTimer() {
    while (!pending_.empty() && !pending_.begin()->second->isValid())
        pending_.erase(pending_.begin());
    const Seconds next = deadline();
    if (next == armedFor_)
        return;
    armedFor_ = next;
    itimerspec when{};
    if (next > 0) {
        // Rounded up, so that the timer is due when the loop looks.
        const double whole = std::floor(next);
        when.it_value.tv_sec = static_cast<time_t>(whole);
        when.it_value.tv_nsec =
            std::min(static_cast<long>(std::ceil((next - whole) * 1e9)) + 1000, 999999999L);
    }
    timerfd_settime(timer_, TFD_TIMER_ABSTIME, &when, nullptr);
}

void EventLoop::dispatchSources(int timeout) {
    std::array<epoll_event, 16> events{};
    const int count = epoll_wait(poll_, events.data(), static_cast<int>(events.size()), timeout);
    std::vector<std::shared_ptr<Source>> readable;
    for (int index = 0; index < count; ++index) {
        const int descriptor = events.at(static_cast<std::size_t>(index)).data.fd;
        if (descriptor == timer_)
            armedFor_ = -1;
        for (const auto& source : sources_) {
            if (source->fileDescriptor == descriptor)
                readable.push_back(source);
        }
    }
    for (const auto& source : readable) {
        if (!source->ended)
            source->onReadable();
    }
}

}  // namespace velmo
