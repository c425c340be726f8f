#pragma once

#include "lifetime.h"
#include "run_loop.h"

#include <functional>
#include <utility>

namespace velmo {

/// Work that is done once, when what runs now has returned, however often it was asked for before.
class PostedOnce {
public:
    PostedOnce(RunLoop& loop, std::function<void()> work) : loop_(loop), work_(std::move(work)) {}

    void request() {
        if (std::exchange(pending_, true))
            return;
        loop_.post(lifetime_.guard([this] {
            pending_ = false;
            work_();
        }));
    }

private:
    RunLoop& loop_;
    std::function<void()> work_;
    bool pending_ = false;
    Lifetime lifetime_;
};

}  // namespace velmo
