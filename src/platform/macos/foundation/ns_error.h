#pragma once

#include "ns_string.h"

namespace velmo::macos {

class NSError : public ClassOf<NSError, "NSError", NSObject> {
public:
    NSString localizedDescription() const { return send<NSString, "localizedDescription">(); }
};

}  // namespace velmo::macos
