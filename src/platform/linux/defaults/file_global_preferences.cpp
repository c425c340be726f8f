#include "file_global_preferences.h"

#include "linux/defaults/json_file.h"
#include "linux/process/xdg_folders.h"

#include <unistd.h>

#include <array>
#include <climits>
#include <utility>

namespace velmo {

FileGlobalPreferences::FileGlobalPreferences(std::filesystem::path file) : file_(std::move(file)) {}

std::optional<GlobalPreferences::Value> FileGlobalPreferences::value(const std::string& key) const {
    if (const auto change = changes_.find(key); change != changes_.end()) {
        if (!change->second)
            return std::nullopt;
        return static_cast<double>(*change->second);
    }
    const auto stored = JsonFile(file_).glance();
    const auto found = stored.find(key);
    if (found == stored.end() || found->is_null())
        return std::nullopt;
    if (found->is_number())
        return found->get<double>();
    return found->is_string() ? found->get<std::string>() : found->dump();
}

void FileGlobalPreferences::setValue(const std::string& key, std::optional<std::int64_t> value) {
    changes_[key] = value;
}

void FileGlobalPreferences::synchronize() {
    const auto changes = std::exchange(changes_, {});
    if (changes.empty())
        return;
    JsonFile file(file_);
    const auto stored = file.read();
    auto changed = stored;
    for (const auto& [key, value] : changes) {
        if (value)
            changed[key] = *value;
        else
            changed.erase(key);
    }
    if (changed != stored)
        file.write(changed);
}

std::filesystem::path globalPreferencesFile(const std::string& host) {
    const auto folder = configurationFolder();
    if (folder.empty())
        return {};
    constexpr const char* harmless = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789.-_";
    std::string name = host.empty() ? "localhost" : host;
    for (auto place = name.find_first_not_of(harmless); place != std::string::npos;
         place = name.find_first_not_of(harmless, place))
        name[place] = '_';
    return folder / "velmo" / ("global-" + name + ".json");
}

std::string hostName() {
    std::array<char, HOST_NAME_MAX + 1> name{};
    if (gethostname(name.data(), name.size() - 1) != 0)
        return {};
    return name.data();
}

}  // namespace velmo
