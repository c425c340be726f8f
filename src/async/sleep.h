#pragma once

#include "async/task_context.h"
#include "platform/lifetime.h"
#include "platform/scoped_timer.h"

namespace velmo {

/// `co_await Sleep(runLoop, seconds)` waits on the monotonic clock. The result is true once the time has
/// passed. It is false where the task is cancelled, which cuts the wait short or leaves it out: the one who
/// waits says what follows from that.
class Sleep {
public:
    Sleep(RunLoop& runLoop, Seconds duration) : runLoop_(runLoop), duration_(duration) {}
    Sleep(const Sleep&) = delete;
    Sleep& operator=(const Sleep&) = delete;
    ~Sleep();

    bool await_ready() const noexcept { return false; }
    template <typename Promise>
    bool await_suspend(std::coroutine_handle<Promise> waiting) {
        return begin(*waiting.promise().context, waiting);
    }
    bool await_resume() const noexcept { return !context_->isCancelled(); }

    /// Wakes the sleeper in a later turn of the loop.
    void interrupt();

private:
    /// False where there is nothing to wait for.
    bool begin(TaskContext& context, std::coroutine_handle<> waiting);
    void wake();

    RunLoop& runLoop_;
    Seconds duration_;
    TaskContext* context_ = nullptr;
    std::coroutine_handle<> waiting_;
    ScopedTimer timer_;
    Lifetime lifetime_;
};

}  // namespace velmo
