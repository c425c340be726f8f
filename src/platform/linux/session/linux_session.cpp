#include "linux_session.h"

#include "linux/process/launch.h"
#include "linux/session/log_out_command.h"

#include <utility>

namespace velmo {

LinuxSession::LinuxSession(const ProcessInfo& process, FindBus findBus, Confirm confirm)
    : process_(process), findBus_(std::move(findBus)), confirm_(std::move(confirm)) {}

void LinuxSession::requestLogOut() {
    if (const auto command = logOutCommand(process_))
        launchDetached(command->program, command->arguments);
    else if (!isPlasma(process_) || !askPlasma())
        confirmOurselves();
}

bool LinuxSession::askPlasma() {
    const auto bus = findBus_();
    if (!bus)
        return false;
    // The bus starts whoever asks; that may take a while when the machine is busy.
    constexpr Seconds startLimit = 30;
    question_ = bus->call({.destination = "org.kde.LogoutPrompt",
                           .path = "/LogoutPrompt",
                           .interface = "org.kde.LogoutPrompt",
                           .member = "promptLogout",
                           .arguments = {},
                           .limit = startLimit,
                           .startsDestination = true},
                          [this](const dbus::Answer& answer) {
                              // Who is silent may be asking all the same.
                              if (!answer.message && !dbus::isSilence(answer.error))
                                  confirmOurselves();
                          });
    return true;
}

void LinuxSession::confirmOurselves() {
    if (const auto command = endSessionCommand(process_))
        confirm_({"Log out now?", "All applications of this session are closed.", "Log Out"},
                 [command] { launchDetached(command->program, command->arguments); });
}

}  // namespace velmo
