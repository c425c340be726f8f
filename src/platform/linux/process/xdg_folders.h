#pragma once

#include <filesystem>
#include <vector>

namespace velmo {

/// Where the user's configuration lies. Empty where the user has neither such a folder nor a home.
std::filesystem::path configurationFolder();

/// Where the system's configuration lies, the most important folder first.
std::vector<std::filesystem::path> systemConfigurationFolders();

}  // namespace velmo
