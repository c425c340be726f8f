#pragma once

#include <memory>
#include <utility>

namespace velmo {

/// Lets callbacks hold their owner weakly: a function made by `guard` does nothing once the lifetime
/// has ended. Keep it as the owner's last member, so that it ends first. Main thread only.
class Lifetime {
public:
    Lifetime() = default;
    Lifetime(const Lifetime&) = delete;
    Lifetime& operator=(const Lifetime&) = delete;
    ~Lifetime() { *alive_ = false; }

    /// Wraps a function whose result is void.
    template <typename Function>
    auto guard(Function function) const {
        // A flag and not a weak reference: the owner may go away inside one guarded call, and others that
        // are made before that one returns have to know.
        return [alive = std::shared_ptr<const bool>(alive_),
                function = std::move(function)](auto&&... arguments) mutable {
            if (*alive)
                function(std::forward<decltype(arguments)>(arguments)...);
        };
    }

private:
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace velmo
