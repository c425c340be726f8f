#pragma once

#include "macos/foundation/ns_string.h"

namespace velmo::macos {

class NSImageSymbolConfiguration
    : public ClassOf<NSImageSymbolConfiguration, "NSImageSymbolConfiguration", NSObject> {
public:
    static NSImageSymbolConfiguration with(CGFloat pointSize, CGFloat weight) {
        return sendToClass<NSImageSymbolConfiguration, "configurationWithPointSize:weight:">(pointSize,
                                                                                             weight);
    }
};

}  // namespace velmo::macos
