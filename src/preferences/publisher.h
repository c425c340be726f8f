#pragma once

#include "platform/run_loop.h"
#include "preferences/subscription.h"

#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace velmo {

/// A source of values that can be subscribed to any number of times. The operators describe a new source;
/// each subscription to it keeps its own state.
template <typename T>
class Publisher {
public:
    using Receiver = std::function<void(const T&)>;

    explicit Publisher(std::function<Subscription(Receiver)> subscribe) : subscribe_(std::move(subscribe)) {}

    Publisher dropFirst() const {
        return Publisher([upstream = subscribe_](Receiver receiver) {
            return upstream([receiver = std::move(receiver), dropped = false](const T& value) mutable {
                if (std::exchange(dropped, true))
                    receiver(value);
            });
        });
    }

    /// Leaves out what equals the value just before it.
    Publisher removeDuplicates() const {
        return Publisher([upstream = subscribe_](Receiver receiver) {
            return upstream(
                [receiver = std::move(receiver), last = std::optional<T>()](const T& value) mutable {
                    // Values may be optional themselves: only like is compared with like.
                    if (last && *last == value)
                        return;
                    last.emplace(value);
                    receiver(value);
                });
        });
    }

    /// Delivers in later turns of the loop. What was under way when the subscription ended is dropped.
    Publisher receiveOn(RunLoop& runLoop) const {
        return Publisher([upstream = subscribe_, &runLoop](Receiver receiver) {
            auto living = std::make_shared<Receiver>(std::move(receiver));
            auto source = std::make_shared<Subscription>(
                upstream([weak = std::weak_ptr<Receiver>(living), &runLoop](const T& value) {
                    runLoop.post([weak, value] {
                        if (const auto held = weak.lock())
                            (*held)(value);
                    });
                }));
            // Both end with whoever holds them.
            return Subscription([living = std::move(living), source = std::move(source)] {});
        });
    }

    [[nodiscard]] Subscription sink(Receiver receiver) const { return subscribe_(std::move(receiver)); }

private:
    std::function<Subscription(Receiver)> subscribe_;
};

}  // namespace velmo
