#include "process_figures.h"

#include <ctime>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace velmo::desktop {

namespace {

struct Standing {
    std::string state;
    pid_t parent = 0;
};

Standing standingOf(const std::filesystem::path& process) {
    std::ifstream file(process / "stat");
    std::string line;
    std::getline(file, line);
    // The name before it may contain anything.
    std::istringstream rest(line.substr(line.rfind(')') + 1));
    Standing standing;
    rest >> standing.state >> standing.parent;
    return standing;
}

/// A process and its descendants.
std::vector<pid_t> familyOf(pid_t process) {
    std::multimap<pid_t, pid_t> byParent;
    for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
        const auto name = entry.path().filename().string();
        if (name.find_first_not_of("0123456789") == std::string::npos)
            byParent.emplace(standingOf(entry.path()).parent, std::stoi(name));
    }
    std::vector<pid_t> family = {process};
    for (std::size_t index = 0; index < family.size(); ++index) {
        const auto [begin, end] = byParent.equal_range(family[index]);
        for (auto child = begin; child != end; ++child)
            family.push_back(child->second);
    }
    return family;
}

/// The number behind a name in a file of lines such as "Pss: 12 kB".
long fieldOf(const std::filesystem::path& path, const std::string& name) {
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with(name))
            return std::stol(line.substr(name.size()));
    }
    return 0;
}

std::filesystem::path folderOf(pid_t process) {
    return "/proc/" + std::to_string(process);
}

}  // namespace

long memoryOf(pid_t process) {
    long sum = 0;
    for (const auto member : familyOf(process))
        sum += fieldOf(folderOf(member) / "smaps_rollup", "Pss:");
    return sum;
}

long sharedMemoryOf(pid_t process) {
    return fieldOf(folderOf(process) / "smaps_rollup", "Pss_Shmem:");
}

long threadsOf(pid_t process) {
    return fieldOf(folderOf(process) / "status", "Threads:");
}

long childrenOf(pid_t process) {
    return static_cast<long>(familyOf(process).size()) - 1;
}

double workOf(pid_t process) {
    double milliseconds = 0;
    for (const auto member : familyOf(process)) {
        clockid_t clock = 0;
        timespec time{};
        if (clock_getcpuclockid(member, &clock) == 0 && clock_gettime(clock, &time) == 0)
            milliseconds += static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
    }
    return milliseconds;
}

bool isAsleep(pid_t process) {
    return standingOf(folderOf(process)).state == "S";
}

SleepCounter::SleepCounter(pid_t process, std::string thread)
    : process_(process), thread_(std::move(thread)), before_(sleepsByThread()) {}

long SleepCounter::count() const {
    long sum = 0;
    for (const auto& [thread, sleeps] : sleepsByThread()) {
        const auto found = before_.find(thread);
        sum += sleeps - (found == before_.end() ? 0 : found->second);
    }
    return sum;
}

std::map<pid_t, long> SleepCounter::sleepsByThread() const {
    std::map<pid_t, long> sleeps;
    for (const auto member : familyOf(process_)) {
        std::error_code error;
        for (const auto& task : std::filesystem::directory_iterator(folderOf(member) / "task", error)) {
            std::string name;
            std::ifstream file(task.path() / "comm");
            std::getline(file, name);
            if (thread_.empty() || name == thread_)
                sleeps[std::stoi(task.path().filename().string())] =
                    fieldOf(task.path() / "status", "voluntary_ctxt_switches:");
        }
    }
    return sleeps;
}

}  // namespace velmo::desktop
