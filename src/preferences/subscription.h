#pragma once

#include <functional>
#include <utility>

namespace velmo {

/// Keeps a receiver subscribed; letting go of it ends the subscription.
class Subscription {
public:
    Subscription() = default;
    explicit Subscription(std::function<void()> cancel) : cancel_(std::move(cancel)) {}
    Subscription(Subscription&& other) noexcept : cancel_(std::exchange(other.cancel_, nullptr)) {}
    Subscription& operator=(Subscription&& other) noexcept {
        if (this != &other) {
            cancel();
            cancel_ = std::exchange(other.cancel_, nullptr);
        }
        return *this;
    }
    Subscription(const Subscription&) = delete;
    Subscription& operator=(const Subscription&) = delete;
    ~Subscription() { cancel(); }

    /// Nothing is received afterwards. Harmless when repeated.
    void cancel() {
        if (const auto cancel = std::exchange(cancel_, nullptr))
            cancel();
    }

private:
    std::function<void()> cancel_;
};

}  // namespace velmo
