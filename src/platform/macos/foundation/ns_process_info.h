#pragma once

#include "ns_dictionary.h"

#include <cstdint>

namespace velmo::macos {

enum class NSActivityOptions : std::uint64_t { userInitiatedAllowingIdleSystemSleep = 0xefffff };

template <>
inline constexpr std::string_view frameworkName<NSActivityOptions> = "NSActivityOptions";

class NSProcessInfo : public ClassOf<NSProcessInfo, "NSProcessInfo", NSObject> {
public:
    static NSProcessInfo current() { return sendToClass<NSProcessInfo, "processInfo">(); }

    std::int32_t processIdentifier() const { return send<std::int32_t, "processIdentifier">(); }
    NSDictionary environment() const { return send<NSDictionary, "environment">(); }
    /// A token for `endActivity`.
    Object beginActivity(NSActivityOptions options, const NSString& reason) const {
        return send<Object, "beginActivityWithOptions:reason:">(options, reason);
    }
    void endActivity(const Object& token) const { send<void, "endActivity:">(token); }
};

}  // namespace velmo::macos
