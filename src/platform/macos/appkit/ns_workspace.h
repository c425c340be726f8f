#pragma once

#include "macos/foundation/ns_url.h"

namespace velmo::macos {

class NSWorkspace : public ClassOf<NSWorkspace, "NSWorkspace", NSObject> {
public:
    static NSWorkspace shared() { return sendToClass<NSWorkspace, "sharedWorkspace">(); }

    bool open(const NSURL& address) const { return send<bool, "openURL:">(address); }
};

}  // namespace velmo::macos
