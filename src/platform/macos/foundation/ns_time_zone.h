#pragma once

#include "ns_object.h"

namespace velmo::macos {

class NSTimeZone : public ClassOf<NSTimeZone, "NSTimeZone", NSObject> {
public:
    /// What the user had chosen when the program first asked, or after `resetSystem`.
    static NSTimeZone system() { return sendToClass<NSTimeZone, "systemTimeZone">(); }
    static void resetSystem() { sendToClass<void, "resetSystemTimeZone">(); }
};

}  // namespace velmo::macos
