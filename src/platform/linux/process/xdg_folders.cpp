#include "xdg_folders.h"

#include "linux/process/split_list.h"

#include <cstdlib>

namespace velmo {

std::filesystem::path configurationFolder() {
    if (const char* configured = std::getenv("XDG_CONFIG_HOME"); configured && *configured == '/')
        return configured;
    if (const char* home = std::getenv("HOME"); home && *home == '/')
        return std::filesystem::path(home) / ".config";
    return {};
}

std::vector<std::filesystem::path> systemConfigurationFolders() {
    const char* configured = std::getenv("XDG_CONFIG_DIRS");
    std::vector<std::filesystem::path> folders;
    for (const auto& folder : splitList(configured && *configured ? configured : "/etc/xdg", ':')) {
        if (folder.starts_with('/'))
            folders.emplace_back(folder);
    }
    return folders;
}

}  // namespace velmo
