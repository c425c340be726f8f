#pragma once

#include "linux/registration.h"

#include <functional>
#include <list>
#include <memory>
#include <utility>
#include <vector>

namespace velmo {

/// Those who want to know when something has changed; each until it ends its registration.
class Listeners {
public:
    Registration add(std::function<void()> listener) {
        const auto place = listeners_.insert(
            listeners_.end(), std::make_shared<Listener>(Listener{std::move(listener), false}));
        return Registration([this, place] {
            (*place)->ended = true;
            listeners_.erase(place);
        });
    }

    void notify() const {
        // A copy, because listeners come and go while they are called.
        const std::vector<std::shared_ptr<Listener>> called(listeners_.begin(), listeners_.end());
        for (const auto& listener : called) {
            if (!listener->ended)
                listener->call();
        }
    }

private:
    struct Listener {
        std::function<void()> call;
        bool ended;
    };

    std::list<std::shared_ptr<Listener>> listeners_;
};

}  // namespace velmo
