#pragma once

#include "linux/defaults/json_file.h"
#include "user_defaults.h"

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace velmo {

/// User defaults in one JSON file. Each change replaces the file atomically before the call returns:
/// whoever reads it, at whatever moment the process dies, finds the old or the new content whole.
class FileUserDefaults : public UserDefaults {
public:
    /// Reads the file if there is one. A file that is no defaults file is renamed, never overwritten;
    /// one that cannot be read is left alone, and changes then last until the process ends.
    explicit FileUserDefaults(std::filesystem::path file);

    void registerDefaults(const std::map<std::string, DefaultsValue>& values) override;
    bool boolForKey(const std::string& key) const override;
    double doubleForKey(const std::string& key) const override;
    std::optional<std::string> stringForKey(const std::string& key) const override;
    std::optional<Data> dataForKey(const std::string& key) const override;
    void setBool(bool value, const std::string& key) override;
    void setDouble(double value, const std::string& key) override;
    void setObject(const DefaultsValue& value, const std::string& key) override;
    void removeObject(const std::string& key) override;

    /// Empty where there is none, or a value of another type.
    std::vector<std::string> stringListForKey(const std::string& key) const;
    void setStringList(const std::vector<std::string>& list, const std::string& key);

private:
    std::optional<DefaultsValue> find(const std::string& key) const;
    void write();

    JsonFile file_;
    /// As in the file, so that what a later version has stored survives an earlier one.
    nlohmann::json stored_;
    std::map<std::string, DefaultsValue> registered_;
};

/// The file for this user: `velmo/defaults.json` below the user's configuration folder. Empty where
/// the user has neither a configuration folder nor a home.
std::filesystem::path userDefaultsFile();

}  // namespace velmo
