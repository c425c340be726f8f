#pragma once

#include "async/task_context.h"

#include <functional>
#include <optional>
#include <utility>

namespace velmo {

/// `co_await Completion<T>(begin)` begins an operation, hands it a callback, and waits for what the callback
/// is given. Only the first call counts. Cancellation does not cut the wait short.
template <typename T>
class Completion {
public:
    using Callback = std::function<void(T)>;

    explicit Completion(std::function<void(Callback)> begin) : begin_(std::move(begin)) {}
    Completion(const Completion&) = delete;
    Completion& operator=(const Completion&) = delete;
    ~Completion() { state_->waiting = nullptr; }

    bool await_ready() const noexcept { return false; }
    template <typename Promise>
    bool await_suspend(std::coroutine_handle<Promise> waiting) {
        state_->context = waiting.promise().context;
        begin_([state = state_](T result) { state->complete(std::move(result)); });
        if (state_->result)
            return false;
        state_->waiting = waiting;
        return true;
    }
    T await_resume() { return std::move(*state_->result); }

private:
    /// Outlives the wait for as long as the operation keeps the callback.
    struct State {
        TaskContext* context = nullptr;
        /// Null while nobody waits.
        std::coroutine_handle<> waiting;
        std::optional<T> result;

        void complete(T value) {
            if (result)
                return;
            result.emplace(std::move(value));
            if (const auto coroutine = std::exchange(waiting, nullptr))
                context->resume(coroutine);
        }
    };

    std::function<void(Callback)> begin_;
    std::shared_ptr<State> state_ = std::make_shared<State>();
};

}  // namespace velmo
