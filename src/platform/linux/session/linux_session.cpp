#include "linux_session.h"

#include "linux/process/launch.h"
#include "linux/session/log_out_command.h"

#include <utility>

namespace velmo {

LinuxSession::LinuxSession(const ProcessInfo& process, Confirm confirm)
    : process_(process), confirm_(std::move(confirm)) {}

void LinuxSession::requestLogOut() {
    if (const auto command = logOutCommand(process_)) {
        launchDetached(command->program, command->arguments);
        return;
    }
    if (const auto command = endSessionCommand(process_))
        confirm_({"Log out now?", "All applications of this session are closed.", "Log Out"},
                 [command] { launchDetached(command->program, command->arguments); });
}

}  // namespace velmo
