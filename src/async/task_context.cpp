#include "async/task_context.h"

#include "async/sleep.h"

#include <utility>

namespace velmo {

TaskContext::~TaskContext() {
    if (root_)
        free();
}

void TaskContext::resume(std::coroutine_handle<> coroutine) {
    struct Turn {
        explicit Turn(std::shared_ptr<TaskContext> of) : context(std::move(of)) { ++context->running_; }
        Turn(const Turn&) = delete;
        Turn& operator=(const Turn&) = delete;
        ~Turn() {
            --context->running_;
            if (context->running_ == 0 && context->root_ && context->root_.done())
                context->free();
        }
        std::shared_ptr<TaskContext> context;
    };
    const Turn turn(shared_from_this());
    coroutine.resume();
}

void TaskContext::free() {
    std::exchange(root_, nullptr).destroy();
}

void TaskContext::cancel() {
    if (std::exchange(isCancelled_, true))
        return;
    for (Sleep* sleep : std::exchange(sleeps_, {}))
        sleep->interrupt();
}

}  // namespace velmo
