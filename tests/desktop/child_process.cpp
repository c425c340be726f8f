#include "child_process.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <stdexcept>
#include <thread>
#include <utility>

namespace velmo::desktop {

namespace {

using std::chrono::milliseconds;

[[noreturn]] void execute(const std::vector<std::string>& command, const Environment& environment) {
    for (const auto& [name, value] : environment)
        setenv(name.c_str(), value.c_str(), 1);
    std::vector<char*> arguments;
    arguments.reserve(command.size() + 1);
    for (const auto& argument : command)
        arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);
    execvp(arguments.front(), arguments.data());
    _exit(127);
}

void redirect(int descriptor, const std::string& file) {
    const int target = open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    dup2(target, descriptor);
    close(target);
}

}  // namespace

ChildProcess::ChildProcess(const std::vector<std::string>& command, const Environment& environment,
                           const std::string& errorFile)
    : id_(fork()) {
    if (id_ < 0)
        throw std::runtime_error("cannot start " + command.front());
    // On either side, so that the group is there whoever comes first.
    setpgid(id_, id_);
    group_ = id_;
    if (id_ > 0)
        return;
    // A test that is broken off ends nothing itself, and what ends its group does not reach this one.
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    redirect(STDOUT_FILENO, "/dev/null");
    redirect(STDERR_FILENO, errorFile.empty() ? "/dev/null" : errorFile);
    execute(command, environment);
}

ChildProcess::~ChildProcess() {
    end();
}

ChildProcess::ChildProcess(ChildProcess&& other) noexcept
    : id_(std::exchange(other.id_, -1)), group_(std::exchange(other.group_, -1)) {}

ChildProcess& ChildProcess::operator=(ChildProcess&& other) noexcept {
    std::swap(id_, other.id_);
    std::swap(group_, other.group_);
    return *this;
}

void ChildProcess::signal(int number) const {
    if (id_ > 0)
        kill(id_, number);
}

std::optional<int> ChildProcess::wait(milliseconds limit) {
    const auto deadline = std::chrono::steady_clock::now() + limit;
    do {
        int status = 0;
        if (id_ > 0 && waitpid(id_, &status, WNOHANG) == id_) {
            id_ = -1;
            return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
        }
        std::this_thread::sleep_for(milliseconds(5));
    } while (std::chrono::steady_clock::now() < deadline);
    return std::nullopt;
}

void ChildProcess::end() {
    if (group_ <= 0)
        return;
    kill(-group_, SIGTERM);
    if (isRunning())
        wait(milliseconds(1000));
    kill(-group_, SIGKILL);
    group_ = -1;
    if (isRunning())
        wait(milliseconds(5000));
}

std::string outputOf(const std::vector<std::string>& command, const Environment& environment) {
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0)
        throw std::runtime_error("no pipe");
    const pid_t child = fork();
    if (child == 0) {
        dup2(ends[1], STDOUT_FILENO);
        close(ends[0]);
        close(ends[1]);
        redirect(STDERR_FILENO, "/dev/null");
        execute(command, environment);
    }
    close(ends[1]);
    std::string output;
    std::array<char, 4096> buffer{};
    for (ssize_t size = 0; (size = read(ends[0], buffer.data(), buffer.size())) > 0;)
        output.append(buffer.data(), static_cast<std::size_t>(size));
    close(ends[0]);
    int status = 0;
    waitpid(child, &status, 0);
    return output;
}

}  // namespace velmo::desktop
