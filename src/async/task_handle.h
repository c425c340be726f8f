#pragma once

#include "async/task_context.h"

namespace velmo {

/// Names a task that was started. Letting go of it changes nothing for the task.
class TaskHandle {
public:
    TaskHandle() = default;
    explicit TaskHandle(std::weak_ptr<TaskContext> context) : context_(std::move(context)) {}

    /// The task learns it at its sleeps. Harmless once it is over, and when repeated.
    void cancel() {
        if (const auto context = context_.lock())
            context->cancel();
    }
    bool isRunning() const {
        const auto context = context_.lock();
        return context && !context->isOver();
    }

private:
    std::weak_ptr<TaskContext> context_;
};

}  // namespace velmo
