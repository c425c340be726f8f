#include "icon_loader_process.h"

#include "linux/icons/icon_answer.h"
#include "linux/icons/icon_protocol.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <string_view>
#include <utility>

namespace velmo {

namespace {

/// How long a killed process is waited for.
constexpr int endMilliseconds = 200;

/// All that the loader is told of the session: the language, and where themes, fonts and its own libraries
/// lie. Whoever gets the better of it need not know how the display and the bus are reached.
constexpr auto passedOn = std::to_array<std::string_view>(
    {"HOME=", "LANG=", "LANGUAGE=", "LC_", "XDG_DATA_HOME=", "XDG_DATA_DIRS=", "XDG_CONFIG_HOME=",
     "XDG_CACHE_HOME=", "FONTCONFIG_", "LD_LIBRARY_PATH=", "LD_PRELOAD=", "QT_PLUGIN_PATH="});

std::vector<char*> loadersEnvironment() {
    std::vector<char*> variables;
    for (char** variable = environ; *variable; ++variable) {
        const std::string_view text = *variable;
        if (std::any_of(passedOn.begin(), passedOn.end(),
                        [&](const auto& beginning) { return text.starts_with(beginning); }))
            variables.push_back(*variable);
    }
    variables.push_back(nullptr);
    return variables;
}

/// The process with the socket as its standard input and output. Negative where it cannot be started.
pid_t spawn(const std::string& program, int socket) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, socket, STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, socket, STDOUT_FILENO);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    std::string name = program;
    const std::array<char*, 2> arguments = {name.data(), nullptr};
    pid_t id = -1;
    if (posix_spawn(&id, program.c_str(), &actions, nullptr, arguments.data(), loadersEnvironment().data()) !=
        0)
        id = -1;
    posix_spawn_file_actions_destroy(&actions);
    return id;
}

}  // namespace

std::unique_ptr<IconLoaderProcess> IconLoaderProcess::start(EventLoop& loop, const std::string& program,
                                                            AnswerHandler onAnswer,
                                                            std::function<void()> onEnd) {
    std::array<int, 2> ends{};
    if (program.empty() || socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0)
        return nullptr;
    const pid_t id = spawn(program, ends[1]);
    close(ends[1]);
    const int handle = id < 0 ? -1 : static_cast<int>(syscall(SYS_pidfd_open, id, 0));
    if (handle < 0) {
        if (id > 0) {
            ::kill(id, SIGKILL);
            waitpid(id, nullptr, 0);
        }
        close(ends[0]);
        return nullptr;
    }
    return std::unique_ptr<IconLoaderProcess>(
        new IconLoaderProcess(loop, id, ends[0], handle, std::move(onAnswer), std::move(onEnd)));
}

IconLoaderProcess::IconLoaderProcess(EventLoop& loop, pid_t id, int socket, int handle,
                                     AnswerHandler onAnswer, std::function<void()> onEnd)
    : id_(id),
      socket_(socket),
      handle_(handle),
      onAnswer_(std::move(onAnswer)),
      onEnd_(std::move(onEnd)),
      socketSource_(loop.addSource(socket, [this] { read(); })),
      handleSource_(loop.addSource(handle_, [this] { reap(); })) {}

IconLoaderProcess::~IconLoaderProcess() {
    kill();
    if (id_ > 0) {
        // One that waits for a disk may not end for long.
        pollfd end{handle_, POLLIN, 0};
        poll(&end, 1, endMilliseconds);
        waitpid(id_, nullptr, WNOHANG);
    }
    handleSource_ = {};
    close(handle_);
    close(socket_);
}

bool IconLoaderProcess::canBeAsked(const IconRequest& request) {
    using namespace icon_protocol;
    const std::array texts = {&request.name, &request.folder, &request.theme};
    return std::all_of(texts.begin(), texts.end(),
                       [](const auto* text) { return text->size() <= longestText; }) &&
           request.data.size() <= mostData && request.side > 0 &&
           static_cast<std::uint32_t>(request.side) <= largestSide;
}

bool IconLoaderProcess::send(const IconRequest& request) const {
    using namespace icon_protocol;
    if (hasEnded())
        return false;
    const std::array texts = {&request.name, &request.folder, &request.theme, &request.data};
    const auto sizeOf = [](const std::string& text) { return static_cast<std::uint32_t>(text.size()); };
    const Request head = {static_cast<std::uint32_t>(request.side), sizeOf(request.name),
                          sizeOf(request.folder), sizeOf(request.theme), sizeOf(request.data)};
    std::string message(reinterpret_cast<const char*>(&head), sizeof head);
    for (const auto* text : texts)
        message += *text;
    // The loader has read everything before, so that there is room for all of it.
    return ::send(socket_, message.data(), message.size(), MSG_NOSIGNAL | MSG_DONTWAIT) ==
           static_cast<ssize_t>(message.size());
}

void IconLoaderProcess::kill() {
    socketSource_ = {};
    if (id_ > 0)
        ::kill(id_, SIGKILL);
}

void IconLoaderProcess::read() {
    std::array<char, 65536> buffer{};
    const ssize_t size = recv(socket_, buffer.data(), buffer.size(), MSG_DONTWAIT);
    if (size <= 0) {
        // The end of the process is told by its handle.
        socketSource_ = {};
        return;
    }
    received_.insert(received_.end(), buffer.begin(), buffer.begin() + size);
    takeAnswer();
}

void IconLoaderProcess::takeAnswer() {
    const auto answer = readIconAnswer(received_);
    if (answer.state == IconAnswer::State::implausible) {
        kill();
    } else if (answer.state == IconAnswer::State::whole) {
        received_ = {};
        onAnswer_(answer.icon);
    }
}

void IconLoaderProcess::reap() {
    if (waitpid(id_, nullptr, WNOHANG) != id_)
        return;
    id_ = -1;
    handleSource_ = {};
    socketSource_ = {};
    onEnd_();
}

}  // namespace velmo
