#pragma once

#include "macos/objc/block.h"
#include "ns_object.h"

namespace velmo::macos {

class NSTimer : public ClassOf<NSTimer, "NSTimer", NSObject> {
public:
    /// Calls the block, which it keeps until it is invalidated.
    static NSTimer with(double interval, bool repeats, const Block<void(NSTimer)>& block);

    void setTolerance(double seconds) const { send<void, "setTolerance:">(seconds); }
    void invalidate() const { send<void, "invalidate">(); }
};

// The block has the class as an argument, which has to be known before its code is made.
inline NSTimer NSTimer::with(double interval, bool repeats, const Block<void(NSTimer)>& block) {
    return sendToClass<NSTimer, "timerWithTimeInterval:repeats:block:">(interval, repeats, block);
}

}  // namespace velmo::macos
