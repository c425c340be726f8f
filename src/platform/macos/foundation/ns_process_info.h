#pragma once

#include "ns_dictionary.h"

#include <cstdint>

namespace velmo::macos {

class NSProcessInfo : public ClassOf<NSProcessInfo, "NSProcessInfo", NSObject> {
public:
    static NSProcessInfo current() { return sendToClass<NSProcessInfo, "processInfo">(); }

    std::int32_t processIdentifier() const { return send<std::int32_t, "processIdentifier">(); }
    NSDictionary environment() const { return send<NSDictionary, "environment">(); }
};

}  // namespace velmo::macos
