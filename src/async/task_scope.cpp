#include "async/task_scope.h"

namespace velmo {

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
