#pragma once

#include "platform/login_service.h"
#include "preferences/published.h"

namespace velmo {

/// Whether the program starts when the user logs in. The system knows; this shows what it said last.
class LoginItemManager {
public:
    explicit LoginItemManager(LoginService& service);

    /// True where the system will start the program without asking anybody.
    Published<bool> isEnabled;
    /// Why the last change failed, in the system's own words.
    Published<std::optional<std::string>> errorMessage;

    void setEnabled(bool wanted);
    /// Asks the system again.
    void refresh();

private:
    LoginService& service_;
};

}  // namespace velmo
