#pragma once

#include "macos/foundation/ns_user_defaults.h"
#include "user_defaults.h"

namespace velmo::macos {

/// The user defaults of the program's own domain.
class MacosUserDefaults : public UserDefaults {
public:
    void registerDefaults(const std::map<std::string, DefaultsValue>& values) override;
    bool boolForKey(const std::string& key) const override;
    double doubleForKey(const std::string& key) const override;
    std::optional<std::string> stringForKey(const std::string& key) const override;
    std::optional<Data> dataForKey(const std::string& key) const override;
    void setBool(bool value, const std::string& key) override;
    void setDouble(double value, const std::string& key) override;
    void setObject(const DefaultsValue& value, const std::string& key) override;
    void removeObject(const std::string& key) override;

private:
    NSUserDefaults defaults_ = NSUserDefaults::standard();
};

}  // namespace velmo::macos
