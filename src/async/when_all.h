#pragma once

#include "async/task.h"

namespace velmo {

/// `co_await WhenAll<T>(tasks)` runs the tasks side by side and waits for all of them, whichever ends first.
/// The results are in the order of the tasks.
template <typename T>
class WhenAll {
public:
    explicit WhenAll(std::vector<Task<T>> tasks) : tasks_(std::move(tasks)) {}
    WhenAll(const WhenAll&) = delete;
    WhenAll& operator=(const WhenAll&) = delete;
    ~WhenAll() = default;

    bool await_ready() const noexcept { return tasks_.empty(); }
    template <typename Promise>
    bool await_suspend(std::coroutine_handle<Promise> waiting) {
        // One more, so that tasks that end at once do not wake the waiter before all have begun.
        awaited_ = tasks_.size() + 1;
        for (Task<T>& task : tasks_)
            task.beginAsOneOf(awaited_, waiting, *waiting.promise().context);
        return --awaited_ > 0;
    }
    std::vector<T> await_resume() {
        std::vector<T> results;
        results.reserve(tasks_.size());
        for (Task<T>& task : tasks_)
            results.push_back(task.takeResult());
        return results;
    }

private:
    std::vector<Task<T>> tasks_;
    std::size_t awaited_ = 0;
};

}  // namespace velmo
