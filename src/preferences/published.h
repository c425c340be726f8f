#pragma once

#include "preferences/publisher.h"

#include <algorithm>
#include <vector>

namespace velmo {

/// An observable value. A new value is announced before it takes effect: receivers that read the value
/// itself still see the old one.
template <typename T>
class Published {
public:
    explicit Published(T value = T()) { state_->value = std::move(value); }
    Published(const Published&) = delete;
    Published& operator=(const Published&) = delete;
    ~Published() = default;

    const T& value() const { return state_->value; }

    void set(T value) {
        // A copy: receivers may come and go while they are told.
        const auto subscribers = state_->subscribers;
        for (const auto& subscriber : subscribers) {
            if (subscriber->active)
                subscriber->receiver(value);
        }
        state_->value = std::move(value);
    }

    /// The current value at subscription, then each new one.
    Publisher<T> publisher() const {
        return Publisher<T>([state = state_](typename Publisher<T>::Receiver receiver) {
            auto subscriber = std::make_shared<Subscriber>();
            subscriber->receiver = std::move(receiver);
            state->subscribers.push_back(subscriber);
            Subscription subscription([weak = std::weak_ptr<State>(state), subscriber] {
                subscriber->active = false;
                if (const auto living = weak.lock())
                    std::erase(living->subscribers, subscriber);
            });
            const T current = state->value;
            subscriber->receiver(current);
            return subscription;
        });
    }

private:
    struct Subscriber {
        typename Publisher<T>::Receiver receiver;
        bool active = true;
    };
    struct State {
        T value;
        std::vector<std::shared_ptr<Subscriber>> subscribers;
    };

    std::shared_ptr<State> state_ = std::make_shared<State>();
};

}  // namespace velmo
