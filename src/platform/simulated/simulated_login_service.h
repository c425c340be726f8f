#pragma once

#include "login_service.h"

namespace velmo {

/// Succeeds unless told otherwise.
class SimulatedLoginService : public LoginService {
public:
    LoginServiceStatus status() const override { return status_; }
    std::optional<std::string> registerService() override { return change(statusAfterRegistration_); }
    std::optional<std::string> unregisterService() override {
        return change(LoginServiceStatus::notRegistered);
    }

    void setStatus(LoginServiceStatus status) { status_ = status; }
    void setStatusAfterRegistration(LoginServiceStatus status) { statusAfterRegistration_ = status; }
    /// Changes fail with this text from now on; absent: they succeed.
    void setError(std::optional<std::string> error) { error_ = std::move(error); }
    int changeCount() const { return changeCount_; }

private:
    std::optional<std::string> change(LoginServiceStatus status) {
        ++changeCount_;
        if (!error_)
            status_ = status;
        return error_;
    }

    LoginServiceStatus status_ = LoginServiceStatus::notRegistered;
    LoginServiceStatus statusAfterRegistration_ = LoginServiceStatus::enabled;
    std::optional<std::string> error_;
    int changeCount_ = 0;
};

}  // namespace velmo
