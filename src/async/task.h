#pragma once

#include "async/task_context.h"

#include <cstddef>
#include <optional>
#include <utility>

namespace velmo {

template <typename T>
class Task;

struct TaskPromiseBase {
    TaskContext* context = nullptr;
    /// Whoever waits for the task. Null for a task that was started by itself.
    std::coroutine_handle<> continuation;
    /// How many tasks the continuation still waits for, where it waits for several.
    std::size_t* awaited = nullptr;

    struct FinalAwaiter {
        bool await_ready() const noexcept { return false; }
        template <typename Promise>
        std::coroutine_handle<> await_suspend(std::coroutine_handle<Promise> finished) const noexcept {
            const TaskPromiseBase& promise = finished.promise();
            const bool othersRemain = promise.awaited != nullptr && --*promise.awaited > 0;
            return othersRemain || !promise.continuation ? std::noop_coroutine() : promise.continuation;
        }
        void await_resume() const noexcept {}
    };

    std::suspend_always initial_suspend() const noexcept { return {}; }
    FinalAwaiter final_suspend() const noexcept { return {}; }
    // As from any other callback of the run loop.
    [[noreturn]] void unhandled_exception() const { throw; }
};

template <typename T>
struct TaskPromise : TaskPromiseBase {
    std::optional<T> result;

    Task<T> get_return_object();
    void return_value(T value) { result.emplace(std::move(value)); }
    T takeResult() { return std::move(*result); }
};

template <>
struct TaskPromise<void> : TaskPromiseBase {
    Task<void> get_return_object();
    void return_void() const noexcept {}
    void takeResult() const noexcept {}
};

/// A coroutine on the main thread. It does nothing until another task awaits it or a `TaskScope` starts it,
/// and ends, wherever it is, once it is let go of. Whatever it refers to has to live as long, arguments given
/// by reference included. `co_await` stands alone, or after `=`, `if (` or `if (!`, since g++ 12 confuses the
/// temporaries of larger expressions.
template <typename T = void>
class [[nodiscard]] Task {
public:
    using promise_type = TaskPromise<T>;
    using Handle = std::coroutine_handle<promise_type>;

    explicit Task(Handle coroutine) : coroutine_(coroutine) {}
    Task(Task&& other) noexcept : coroutine_(std::exchange(other.coroutine_, nullptr)) {}
    Task& operator=(Task&&) = delete;
    Task(const Task&) = delete;
    Task& operator=(const Task&) = delete;
    ~Task() {
        if (coroutine_)
            coroutine_.destroy();
    }

    bool await_ready() const noexcept { return false; }
    template <typename Promise>
    std::coroutine_handle<> await_suspend(std::coroutine_handle<Promise> awaiting) noexcept {
        coroutine_.promise().context = awaiting.promise().context;
        coroutine_.promise().continuation = awaiting;
        return coroutine_;
    }
    T await_resume() { return takeResult(); }

    /// Runs the task up to its first wait, as one of several that `awaiting` waits for.
    void beginAsOneOf(std::size_t& awaited, std::coroutine_handle<> awaiting, TaskContext& context) {
        coroutine_.promise().context = &context;
        coroutine_.promise().continuation = awaiting;
        coroutine_.promise().awaited = &awaited;
        coroutine_.resume();
    }
    T takeResult() { return coroutine_.promise().takeResult(); }

    /// Gives the coroutine to a context.
    Handle release(TaskContext& context) && {
        coroutine_.promise().context = &context;
        context.own(coroutine_);
        return std::exchange(coroutine_, nullptr);
    }

private:
    Handle coroutine_;
};

template <typename T>
Task<T> TaskPromise<T>::get_return_object() {
    return Task<T>(Task<T>::Handle::from_promise(*this));
}

inline Task<void> TaskPromise<void>::get_return_object() {
    return Task<void>(Task<void>::Handle::from_promise(*this));
}

}  // namespace velmo
