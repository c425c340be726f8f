#pragma once

#include "linux/login/desktop_entry.h"
#include "login_service.h"
#include "process_info.h"

#include <filesystem>
#include <string>
#include <vector>

namespace velmo {

/// Starts the program by an autostart entry, which every desktop reads when its session begins.
class AutostartLoginService : public LoginService {
public:
    struct Environment {
        /// What is to be started.
        std::filesystem::path program;
        /// Where the user's entries lie. Empty where the user has no such place.
        std::filesystem::path userFolder;
        /// Where the system's lie, the most important folder first. The user's hide those of the same name.
        std::vector<std::filesystem::path> systemFolders;
    };

    AutostartLoginService(Environment environment, const ProcessInfo& process);

    /// An entry that the desktop passes over requires approval; one whose program is missing is not found.
    LoginServiceStatus status() const override;
    /// Other keys of the user's entry are kept.
    std::optional<std::string> registerService() override;
    /// An entry of the system is hidden by one of the user's.
    std::optional<std::string> unregisterService() override;

private:
    std::filesystem::path userEntry() const;
    std::filesystem::path systemEntry() const;
    bool programIsThere(const DesktopEntry& entry) const;
    bool runsThisProgram(const DesktopEntry& entry) const;
    bool isShownHere(const DesktopEntry& entry) const;
    std::optional<std::string> write(const DesktopEntry& entry) const;

    Environment environment_;
    const ProcessInfo& process_;
};

/// For this program and this user.
AutostartLoginService::Environment autostartEnvironment();

}  // namespace velmo
