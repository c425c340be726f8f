#pragma once

#include "ns_object.h"

namespace velmo::macos {

class NSTimeZone : public ClassOf<NSTimeZone, "NSTimeZone", NSObject> {
public:
    /// Follows what the user changes.
    static NSTimeZone local() { return sendToClass<NSTimeZone, "localTimeZone">(); }
    /// Forgets what was read of the system's time zone.
    static void resetSystem() { sendToClass<void, "resetSystemTimeZone">(); }
};

}  // namespace velmo::macos
