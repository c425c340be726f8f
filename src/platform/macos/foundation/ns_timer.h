#pragma once

#include "macos/objc/block.h"
#include "ns_object.h"

namespace velmo::macos {

class NSTimer : public ClassOf<NSTimer, "NSTimer", NSObject> {
public:
    static NSTimer with(double interval, bool repeats, const Block<void(NSTimer)>& block) {
        return sendToClass<NSTimer, "timerWithTimeInterval:repeats:block:">(interval, repeats, block);
    }

    void setTolerance(double seconds) const { send<void, "setTolerance:">(seconds); }
    void invalidate() const { send<void, "invalidate">(); }
};

}  // namespace velmo::macos
