#include "log_out_command.h"

#include "linux/process/current_desktop.h"
#include "linux/process/find_program.h"

#include <strings.h>

#include <algorithm>

namespace velmo {

namespace {

struct KnownCommand {
    /// As in $XDG_CURRENT_DESKTOP; case does not matter.
    const char* desktop;
    const char* program;
    std::vector<std::string> arguments;
};

/// Each shows a dialog, unless the user has told it not to ask.
const std::vector<KnownCommand>& knownCommands() {
    static const std::vector<KnownCommand> commands = {
        {"GNOME", "gnome-session-quit", {"--logout"}},
        {"Unity", "gnome-session-quit", {"--logout"}},
        // With --logout these would not ask, the second one only if it is set to.
        {"XFCE", "xfce4-session-logout", {}},
        {"LXQt", "lxqt-leave", {}},
        {"MATE", "mate-session-save", {"--logout-dialog"}},
        {"X-Cinnamon", "cinnamon-session-quit", {"--logout"}},
        {"Cinnamon", "cinnamon-session-quit", {"--logout"}},
        {"LXDE", "lxsession-logout", {}},
    };
    return commands;
}

}  // namespace

std::optional<LogOutCommand> logOutCommand(const ProcessInfo& process) {
    for (const auto& desktop : currentDesktops(process)) {
        for (const auto& command : knownCommands()) {
            if (strcasecmp(desktop.c_str(), command.desktop) != 0)
                continue;
            if (const auto program = findProgram(command.program, process))
                return LogOutCommand{*program, command.arguments};
        }
    }
    return std::nullopt;
}

bool isPlasma(const ProcessInfo& process) {
    const auto desktops = currentDesktops(process);
    return std::any_of(desktops.begin(), desktops.end(),
                       [](const auto& desktop) { return strcasecmp(desktop.c_str(), "KDE") == 0; });
}

std::optional<LogOutCommand> endSessionCommand(const ProcessInfo& process) {
    const auto program = findProgram("loginctl", process);
    if (!program)
        return std::nullopt;
    const auto session = process.environment("XDG_SESSION_ID").value_or("");
    // Without a session of its own, a process stands for the one that its user looks at.
    return LogOutCommand{*program, {"terminate-session", session.empty() ? "auto" : session}};
}

}  // namespace velmo
