#include "find_program.h"

#include "linux/process/split_list.h"

#include <sys/stat.h>
#include <unistd.h>

namespace velmo {

namespace {

constexpr const char* defaultFolders = "/usr/local/bin:/usr/bin:/bin";

/// What is relative depends on where we happen to be.
bool isProgram(const std::string& file) {
    struct stat status {};
    return file.starts_with('/') && stat(file.c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
           access(file.c_str(), X_OK) == 0;
}

}  // namespace

std::optional<std::string> findProgram(const std::string& name, const ProcessInfo& process) {
    if (isProgram(name))
        return name;
    for (const auto& folder : splitList(process.environment("PATH").value_or(defaultFolders), ':')) {
        std::string file = folder;
        file.append("/").append(name);
        if (name.find('/') == std::string::npos && isProgram(file))
            return file;
    }
    return std::nullopt;
}

}  // namespace velmo
