#pragma once

#include "ns_object.h"

namespace velmo::macos {

class NSTimeZone : public ClassOf<NSTimeZone, "NSTimeZone", NSObject> {
public:
    /// What the user has chosen by now, once the system has told of a change.
    static NSTimeZone system() { return sendToClass<NSTimeZone, "systemTimeZone">(); }
};

}  // namespace velmo::macos
