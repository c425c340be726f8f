#include "async/task_scope.h"

namespace velmo {

TaskScope::~TaskScope() {
    // Also those that someone keeps for a moment, such as the one that is letting go of this scope.
    for (const auto& task : tasks_)
        task->end();
}

TaskHandle TaskScope::start(Task<void> task) {
    std::erase_if(tasks_, [](const auto& other) { return other->isOver(); });
    const auto context = std::make_shared<TaskContext>();
    const auto coroutine = std::move(task).release(*context);
    tasks_.push_back(context);
    runLoop_.post([weak = std::weak_ptr<TaskContext>(context), coroutine] {
        if (const auto living = weak.lock())
            living->resume(coroutine);
    });
    return TaskHandle(context);
}

}  // namespace velmo
