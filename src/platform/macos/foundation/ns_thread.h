#pragma once

#include "ns_object.h"

namespace velmo::macos {

class NSThread : public ClassOf<NSThread, "NSThread", NSObject> {
public:
    static bool isMainThread() { return sendToClass<bool, "isMainThread">(); }
};

}  // namespace velmo::macos
