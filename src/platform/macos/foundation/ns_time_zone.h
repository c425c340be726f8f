#pragma once

#include "ns_object.h"

namespace velmo::macos {

class NSTimeZone : public ClassOf<NSTimeZone, "NSTimeZone", NSObject> {
public:
    /// Follows what the user changes.
    static NSTimeZone local() { return sendToClass<NSTimeZone, "localTimeZone">(); }
};

}  // namespace velmo::macos
