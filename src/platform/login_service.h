#pragma once

#include <optional>
#include <string>

namespace velmo {

enum class LoginServiceStatus { notRegistered = 0, enabled = 1, requiresApproval = 2, notFound = 3 };

/// Starts the program when the user logs in.
class LoginService {
public:
    virtual ~LoginService() = default;

    virtual LoginServiceStatus status() const = 0;
    /// Both give the system's own words for what went wrong; absent on success.
    virtual std::optional<std::string> registerService() = 0;
    virtual std::optional<std::string> unregisterService() = 0;
};

}  // namespace velmo
