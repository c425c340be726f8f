#pragma once

#include "global_preferences.h"
#include "login_service.h"
#include "session.h"

namespace velmo::placeholder {

// Each goes away with the service that takes its place.

class NoLogin : public LoginService {
public:
    LoginServiceStatus status() const override { return LoginServiceStatus::notFound; }
    std::optional<std::string> registerService() override { return {}; }
    std::optional<std::string> unregisterService() override { return {}; }
};

class NoGlobals : public GlobalPreferences {
public:
    std::optional<Value> value(const std::string& /*key*/) const override { return {}; }
    void setValue(const std::string& /*key*/, std::optional<std::int64_t> /*value*/) override {}
    void synchronize() override {}
};

class NoSession : public Session {
public:
    void requestLogOut() override {}
};

}  // namespace velmo::placeholder
