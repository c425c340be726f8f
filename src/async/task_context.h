#pragma once

#include <coroutine>
#include <memory>
#include <vector>

namespace velmo {

class Sleep;

/// What all coroutines of one started task have in common: they are cancelled together, and freed together.
/// Main thread only.
class TaskContext : public std::enable_shared_from_this<TaskContext> {
public:
    TaskContext() = default;
    TaskContext(const TaskContext&) = delete;
    TaskContext& operator=(const TaskContext&) = delete;
    /// Frees the coroutines. One of them may be running: it holds this until it suspends.
    ~TaskContext();

    /// Takes over the outermost coroutine, which owns the others.
    void own(std::coroutine_handle<> root) { root_ = root; }
    /// Lets one of the task's suspended coroutines go on.
    void resume(std::coroutine_handle<> coroutine);
    /// True once the task has run to its end.
    bool isOver() const { return !root_; }

    /// Wakes whatever part of the task sleeps. Captures under way are waited for all the same.
    void cancel();
    bool isCancelled() const { return isCancelled_; }

    void beginSleep(Sleep* sleep) { sleeps_.push_back(sleep); }
    void endSleep(Sleep* sleep) { std::erase(sleeps_, sleep); }

private:
    void free();

    std::coroutine_handle<> root_;
    /// How many of the task's coroutines are running: a nested run loop may wake a second one.
    int running_ = 0;
    bool isCancelled_ = false;
    std::vector<Sleep*> sleeps_;
};

}  // namespace velmo
