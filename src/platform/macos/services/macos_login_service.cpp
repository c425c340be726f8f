#include "macos_login_service.h"

#include "macos/service_management/sm_app_service.h"

namespace velmo::macos {

LoginServiceStatus MacosLoginService::status() const {
    return static_cast<LoginServiceStatus>(SMAppService::main().status());
}

std::optional<std::string> MacosLoginService::registerService() {
    NSError error;
    if (SMAppService::main().registerAndReturnError(error))
        return std::nullopt;
    return error.localizedDescription().text();
}

std::optional<std::string> MacosLoginService::unregisterService() {
    NSError error;
    if (SMAppService::main().unregisterAndReturnError(error))
        return std::nullopt;
    return error.localizedDescription().text();
}

}  // namespace velmo::macos
