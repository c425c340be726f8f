#pragma once

#include <sys/types.h>

#include <chrono>
#include <csignal>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace velmo::desktop {

using Environment = std::map<std::string, std::string>;

/// A program that runs beside the test; it ends with this object or the test at the latest. What it has
/// started ends with this object, too, unless that has left its group of processes.
class ChildProcess {
public:
    /// `errorFile` receives its standard error; empty for nowhere.
    ChildProcess(const std::vector<std::string>& command, const Environment& environment,
                 const std::string& errorFile = {});
    ~ChildProcess();
    ChildProcess(ChildProcess&& other) noexcept;
    ChildProcess& operator=(ChildProcess&& other) noexcept;
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    pid_t id() const { return id_; }
    /// False once its end was seen.
    bool isRunning() const { return id_ > 0; }
    void signal(int number) const;
    /// The exit status (128 and the number for a signal), or nothing while it still runs after `limit`.
    std::optional<int> wait(std::chrono::milliseconds limit);
    /// Asks it and what it has started to end. Insists once it has, or after a second.
    void end();

private:
    pid_t id_ = -1;
    /// What it has started may live on when it has ended.
    pid_t group_ = -1;
};

/// Runs a command to its end and returns what it printed.
std::string outputOf(const std::vector<std::string>& command, const Environment& environment);

}  // namespace velmo::desktop
