#include "linux_workspace.h"

#include "linux/process/find_program.h"
#include "linux/process/launch.h"
#include "linux/workspace/address.h"
#include "linux/workspace/settings_programs.h"

#include <vector>

namespace velmo {

namespace {

constexpr const char* settingsScheme = "x-apple.systempreferences";

SettingsPane paneOf(const Address& address) {
    if (address.path == "com.apple.ControlCenter-Settings.extension")
        return SettingsPane::dateAndTime;
    if (address.path == "com.apple.preference.security")
        return SettingsPane::privacy;
    return SettingsPane::overview;
}

}  // namespace

void LinuxWorkspace::open(const std::string& address) {
    const auto parsed = parseAddress(address);
    if (!parsed)
        return;
    const auto commands =
        parsed->scheme == settingsScheme
            ? settingsCommands(process_.environment("XDG_CURRENT_DESKTOP").value_or(""), paneOf(*parsed))
            : std::vector<std::vector<std::string>>{{"xdg-open", address}};
    for (const auto& command : commands) {
        if (const auto program = findProgram(command.front(), process_)) {
            launchDetached(*program, {command.begin() + 1, command.end()});
            return;
        }
    }
}

}  // namespace velmo
