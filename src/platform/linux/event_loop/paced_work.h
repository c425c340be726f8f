#pragma once

#include "lifetime.h"
#include "run_loop.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace velmo {

/// Work that is done in a later turn of the loop, and again only after a pause, however often others cause
/// it. What is caused only now and then may be done some times without a pause: each pause in which it is not
/// done makes up for one.
class PacedWork {
public:
    PacedWork(RunLoop& loop, Seconds pause, std::function<void()> work, int timesAtOnce = 1)
        : loop_(loop),
          pause_(pause),
          timesAtOnce_(timesAtOnce),
          work_(std::move(work)),
          timesLeft_(timesAtOnce),
          countedAt_(loop.now()) {}

    /// For what has changed just now: one round of the work comes after this.
    void request() {
        if (std::exchange(pending_, true))
            return;
        count();
        if (timesLeft_ >= 1)
            loop_.post(lifetime_.guard([this] { work(); }));
        else
            loop_.schedule((1 - timesLeft_) * pause_, lifetime_.guard([this] { work(); }));
    }

    bool isPending() const { return pending_; }

private:
    void count() {
        const Date now = loop_.now();
        // The clock may have been set back meanwhile.
        const Seconds passed = std::max(now - std::exchange(countedAt_, now), 0.0);
        timesLeft_ = std::min(timesLeft_ + passed / pause_, timesAtOnce_);
    }
    void work() {
        pending_ = false;
        count();
        timesLeft_ = std::max(timesLeft_ - 1, 0.0);
        work_();
    }

    RunLoop& loop_;
    Seconds pause_;
    double timesAtOnce_;
    std::function<void()> work_;
    bool pending_ = false;
    /// As of the date; a part of one is what has passed of a pause.
    double timesLeft_;
    Date countedAt_;
    Lifetime lifetime_;
};

}  // namespace velmo
