#pragma once

#include "macos/appkit/ns_control.h"
#include "macos/objc/instance.h"

#include <functional>
#include <utility>

namespace velmo::macos {

/// Calls a function when the user has used a control.
class ControlTarget {
public:
    ControlTarget(NSControl control, std::function<void()> function)
        : control_(std::move(control)), function_(std::move(function)) {
        control_.setTarget(instance_.object());
        control_.setAction(selectorNamed<"controlUsed:">());
    }
    ~ControlTarget() { control_.setTarget(Object()); }
    ControlTarget(const ControlTarget&) = delete;
    ControlTarget& operator=(const ControlTarget&) = delete;

private:
    void used(const NSObject& /*sender*/) {
        // A copy: it may end this.
        const auto function = function_;
        function();
    }

    using Class =
        Subclass<ControlTarget, "VelmoControlTarget", NSObject, Method<"controlUsed:", &ControlTarget::used>>;

    NSControl control_;
    std::function<void()> function_;
    Instance<ControlTarget, Class, NSObject> instance_{*this};
};

}  // namespace velmo::macos
