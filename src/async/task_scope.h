#pragma once

#include "async/task.h"
#include "async/task_handle.h"
#include "platform/run_loop.h"

namespace velmo {

/// Owns the tasks that it starts: they end with it, wherever they are. An owner that its tasks refer to keeps
/// its scope after everything else.
class TaskScope {
public:
    explicit TaskScope(RunLoop& runLoop) : runLoop_(runLoop) {}
    TaskScope(const TaskScope&) = delete;
    TaskScope& operator=(const TaskScope&) = delete;
    ~TaskScope() = default;

    /// The task begins to run in a later turn of the loop.
    TaskHandle start(Task<void> task);

private:
    RunLoop& runLoop_;
    std::vector<std::shared_ptr<TaskContext>> tasks_;
};

}  // namespace velmo
