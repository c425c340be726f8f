#pragma once

#include "run_loop.h"

#include <memory>
#include <utility>

namespace velmo {

/// A timer that ends with its holder, or when another one takes its place.
class ScopedTimer {
public:
    ScopedTimer() = default;
    ScopedTimer(const ScopedTimer&) = delete;
    ScopedTimer& operator=(const ScopedTimer&) = delete;
    ~ScopedTimer() { end(); }

    ScopedTimer& operator=(std::shared_ptr<Timer> timer) {
        end();
        timer_ = std::move(timer);
        return *this;
    }

    /// Harmless where none is held.
    void end() {
        if (timer_)
            timer_->invalidate();
        timer_.reset();
    }

    /// True while its work is still to come, or to be repeated.
    bool isValid() const { return timer_ && timer_->isValid(); }

private:
    std::shared_ptr<Timer> timer_;
};

}  // namespace velmo
