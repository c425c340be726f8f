#include "linux_process_info.h"

#include <unistd.h>

#include <cstdlib>
#include <fstream>

namespace velmo {

std::int32_t LinuxProcessInfo::processIdentifier() const {
    return getpid();
}

std::optional<std::string> LinuxProcessInfo::environment(const std::string& name) const {
    if (const char* value = std::getenv(name.c_str()))
        return value;
    return std::nullopt;
}

std::optional<std::string> processName(std::int32_t processIdentifier) {
    std::ifstream file("/proc/" + std::to_string(processIdentifier) + "/comm");
    std::string name;
    if (!std::getline(file, name) || name.empty())
        return std::nullopt;
    return name;
}

}  // namespace velmo
