#pragma once

#include "ns_object.h"

namespace velmo::macos {

class NSTimer : public ClassOf<NSTimer, "NSTimer", NSObject> {
public:
    /// Sends the message to the target, which it retains until it is invalidated.
    static NSTimer with(double interval, const Object& target, Selector message, bool repeats) {
        return sendToClass<NSTimer, "timerWithTimeInterval:target:selector:userInfo:repeats:">(
            interval, target, message, Object(), repeats);
    }

    void setTolerance(double seconds) const { send<void, "setTolerance:">(seconds); }
    void invalidate() const { send<void, "invalidate">(); }
};

}  // namespace velmo::macos
