#pragma once

#include "ns_object.h"

namespace velmo::macos {

class NSLocale : public ClassOf<NSLocale, "NSLocale", NSObject> {
public:
    /// Follows what the user changes.
    static NSLocale autoupdatingCurrent() { return sendToClass<NSLocale, "autoupdatingCurrentLocale">(); }
};

}  // namespace velmo::macos
