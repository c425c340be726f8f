#pragma once

#include "global_preferences.h"

#include <filesystem>
#include <map>
#include <string>

namespace velmo {

/// Global preferences in one JSON file, which others may write, too: it is read whenever somebody asks.
class FileGlobalPreferences : public GlobalPreferences {
public:
    explicit FileGlobalPreferences(std::filesystem::path file);

    std::optional<Value> value(const std::string& key) const override;
    void setValue(const std::string& key, std::optional<std::int64_t> value) override;
    /// Changes that cannot be written are lost.
    void synchronize() override;

private:
    std::filesystem::path file_;
    /// Set, and not yet written.
    std::map<std::string, std::optional<std::int64_t>> changes_;
};

/// The file for this user on the host with that name: `velmo/global-HOST.json` below the user's configuration
/// folder. Empty where the user has neither a configuration folder nor a home.
std::filesystem::path globalPreferencesFile(const std::string& host);

/// The name of this host.
std::string hostName();

}  // namespace velmo
