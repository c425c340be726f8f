#pragma once

#include "macos/foundation/ns_error.h"

namespace velmo::macos {

enum class SMAppServiceStatus : NSInteger {
    notRegistered = 0,
    enabled = 1,
    requiresApproval = 2,
    notFound = 3
};

template <>
inline constexpr std::string_view frameworkName<SMAppServiceStatus> = "SMAppServiceStatus";

class SMAppService : public ClassOf<SMAppService, "SMAppService", NSObject> {
public:
    static SMAppService main() { return sendToClass<SMAppService, "mainAppService">(); }

    SMAppServiceStatus status() const { return send<SMAppServiceStatus, "status">(); }
    /// Both give false and the error where they fail.
    bool registerAndReturnError(NSError& error) const {
        Id reported = nullptr;
        const bool succeeded = send<bool, "registerAndReturnError:">(&reported);
        error = Object::share<NSError>(reported);
        return succeeded;
    }
    bool unregisterAndReturnError(NSError& error) const {
        Id reported = nullptr;
        const bool succeeded = send<bool, "unregisterAndReturnError:">(&reported);
        error = Object::share<NSError>(reported);
        return succeeded;
    }
};

}  // namespace velmo::macos
