#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace velmo {

using Data = std::vector<std::uint8_t>;
using DefaultsValue = std::variant<bool, double, std::string, Data>;

/// A per-user key-value store. Reading finds a stored value first, then a registered one. No
/// operation reports an error: what cannot be stored lasts until the process ends.
class UserDefaults {
public:
    virtual ~UserDefaults() = default;

    /// Values for keys that were never stored. They live in memory only.
    virtual void registerDefaults(const std::map<std::string, DefaultsValue>& values) = 0;

    /// False where there is none. Numbers other than 0, and texts that begin like a yes or a number
    /// other than 0, are true.
    virtual bool boolForKey(const std::string& key) const = 0;
    /// 0 where there is none. Texts are read up to where they stop being a number.
    virtual double doubleForKey(const std::string& key) const = 0;
    /// Absent where there is none; numbers and bools are given as text.
    virtual std::optional<std::string> stringForKey(const std::string& key) const = 0;
    /// Absent where there is none, or a value of another type.
    virtual std::optional<Data> dataForKey(const std::string& key) const = 0;

    virtual void setBool(bool value, const std::string& key) = 0;
    virtual void setDouble(double value, const std::string& key) = 0;
    virtual void setObject(const DefaultsValue& value, const std::string& key) = 0;
    virtual void removeObject(const std::string& key) = 0;
};

}  // namespace velmo
