#pragma once

#include "simulated/simulated_timer.h"

#include <cstddef>
#include <deque>
#include <map>
#include <optional>
#include <vector>

namespace velmo {

/// A run loop with a virtual clock: time passes only in `advance` and `runUntilIdle`. Time is kept in whole
/// nanoseconds, so that any two ways of adding up to a moment meet exactly.
class SimulatedRunLoop : public RunLoop {
public:
    SimulatedRunLoop() = default;
    SimulatedRunLoop(const SimulatedRunLoop&) = delete;
    SimulatedRunLoop& operator=(const SimulatedRunLoop&) = delete;
    ~SimulatedRunLoop() override;

    Date now() const override;
    void post(std::function<void()> work) override;
    std::shared_ptr<Timer> schedule(Seconds interval, std::function<void()> work) override;

    std::shared_ptr<Timer> scheduleRepeating(Seconds interval, Seconds tolerance,
                                             std::function<void()> work) override;

    /// Runs what is posted, and whatever that posts in turn. Timers do not run.
    void runPosted();
    /// Lets the time pass, running posted work and each timer at its moment. `advance(0)` runs what is due
    /// now. A negative time counts as none.
    void advance(Seconds seconds);
    /// Jumps to the earliest timer and runs its work alone: what that posts stays posted. False where there
    /// is no timer.
    bool fireNextTimer();
    /// Jumps from one timer to the next until nothing is left to do, or until `limit` seconds have passed.
    /// True when nothing is left.
    bool runUntilIdle(Seconds limit = 3600);

    /// Seconds since the loop was made.
    Seconds elapsed() const;
    /// Sets the time of day. Timers do not notice.
    void setNow(Date date);

    std::size_t postedCount() const { return posted_.size(); }
    std::size_t timerCount() const { return timers_.size(); }
    /// Seconds until the earliest timer runs. Absent where there is none.
    std::optional<Seconds> nextTimer() const;
    /// How late each timer may be, the earliest timer first. None of them ever is.
    std::vector<Seconds> tolerances() const;

private:
    friend class SimulatedTimer;

    void runEarliestTimer();
    void fireEarliestTimer();

    std::int64_t elapsed_ = 0;
    Date dateAtStart_ = 0;
    std::uint64_t sequence_ = 0;
    std::deque<std::function<void()>> posted_;
    std::map<SimulatedTimer::Key, std::shared_ptr<SimulatedTimer>> timers_;
};

}  // namespace velmo
