#pragma once

#include "login_service.h"

namespace velmo::macos {

/// Starts the application bundle at login.
class MacosLoginService : public LoginService {
public:
    LoginServiceStatus status() const override;
    std::optional<std::string> registerService() override;
    std::optional<std::string> unregisterService() override;
};

}  // namespace velmo::macos
