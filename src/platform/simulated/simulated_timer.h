#pragma once

#include "run_loop.h"

#include <cstdint>
#include <utility>

namespace velmo {

class SimulatedRunLoop;

class SimulatedTimer : public Timer {
public:
    /// Deadline in nanoseconds of the virtual clock, then the order of scheduling.
    using Key = std::pair<std::int64_t, std::uint64_t>;

    /// `interval` is in nanoseconds; 0 runs the work once.
    SimulatedTimer(SimulatedRunLoop& runLoop, Key key, std::function<void()> work, std::int64_t interval = 0,
                   Seconds tolerance = 0);

    void invalidate() override;
    bool isValid() const override { return runLoop_ != nullptr; }

private:
    friend class SimulatedRunLoop;

    /// Null once the work has begun to run or was given up.
    SimulatedRunLoop* runLoop_;
    Key key_;
    std::function<void()> work_;
    std::int64_t interval_;
    Seconds tolerance_;
};

}  // namespace velmo
