#pragma once

#include "lifetime.h"
#include "run_loop.h"

#include <functional>
#include <limits>
#include <utility>

namespace velmo {

/// Work that is done in a later turn of the loop, and again only after a pause, however often others cause
/// it.
class PacedWork {
public:
    PacedWork(RunLoop& loop, Seconds pause, std::function<void()> work)
        : loop_(loop), pause_(pause), work_(std::move(work)) {}

    /// For what has changed just now: one round of the work comes after this.
    void request() {
        if (std::exchange(pending_, true))
            return;
        const Seconds rest = lastDone_ + pause_ - loop_.now();
        // More than a whole pause where the clock was set back meanwhile.
        if (rest <= 0 || rest > pause_)
            loop_.post(lifetime_.guard([this] { work(); }));
        else
            loop_.schedule(rest, lifetime_.guard([this] { work(); }));
    }

private:
    void work() {
        pending_ = false;
        lastDone_ = loop_.now();
        work_();
    }

    RunLoop& loop_;
    Seconds pause_;
    std::function<void()> work_;
    bool pending_ = false;
    Date lastDone_ = -std::numeric_limits<Date>::infinity();
    Lifetime lifetime_;
};

}  // namespace velmo
