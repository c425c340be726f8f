#include "launch.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

namespace velmo {

namespace {

/// Between fork and exec, where nothing but system calls is safe.
[[noreturn]] void becomeProgram(const char* file, char* const* arguments) {
    setsid();
    // A second generation, whose parent is gone: nobody has to wait for it.
    if (_Fork() != 0)
        _exit(0);
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    signal(SIGPIPE, SIG_DFL);
    signal(SIGCHLD, SIG_DFL);
    const int nowhere = open("/dev/null", O_RDWR);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        dup2(nowhere, stream);
    close_range(STDERR_FILENO + 1, ~0U, 0);
    execv(file, arguments);
    _exit(127);
}

}  // namespace

void launchDetached(const std::string& file, const std::vector<std::string>& arguments) {
    std::vector<char*> values = {const_cast<char*>(file.c_str())};
    for (const auto& argument : arguments)
        values.push_back(const_cast<char*>(argument.c_str()));
    values.push_back(nullptr);
    const pid_t child = _Fork();
    if (child == 0)
        becomeProgram(file.c_str(), values.data());
    while (child > 0 && waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
    }
}

}  // namespace velmo
