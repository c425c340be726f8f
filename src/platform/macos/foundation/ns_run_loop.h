#pragma once

#include "macos/objc/global.h"
#include "ns_string.h"
#include "ns_timer.h"

namespace velmo::macos {

extern "C" const Id NSRunLoopCommonModes;
/// Also while a menu or a drag is tracked.
inline constexpr Global<&NSRunLoopCommonModes, NSString> commonRunLoopModes;

class NSRunLoop : public ClassOf<NSRunLoop, "NSRunLoop", NSObject> {
public:
    static NSRunLoop main() { return sendToClass<NSRunLoop, "mainRunLoop">(); }

    void add(const NSTimer& timer, const NSString& mode) const {
        send<void, "addTimer:forMode:">(timer, mode);
    }
};

}  // namespace velmo::macos
