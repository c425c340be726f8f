#pragma once

#include "user_defaults.h"

#include <cstddef>
#include <functional>

namespace velmo {

class SimulatedUserDefaults : public UserDefaults {
public:
    using Values = std::map<std::string, DefaultsValue>;
    /// The key, and the value or nothing for a removal.
    using WriteObserver = std::function<void(const std::string&, const std::optional<DefaultsValue>&)>;

    void registerDefaults(const std::map<std::string, DefaultsValue>& values) override;
    bool boolForKey(const std::string& key) const override;
    double doubleForKey(const std::string& key) const override;
    std::optional<std::string> stringForKey(const std::string& key) const override;
    std::optional<Data> dataForKey(const std::string& key) const override;
    void setBool(bool value, const std::string& key) override;
    void setDouble(double value, const std::string& key) override;
    void setObject(const DefaultsValue& value, const std::string& key) override;
    void removeObject(const std::string& key) override;

    /// What a real store would have on disk.
    const Values& stored() const { return stored_; }
    const Values& registered() const { return registered_; }
    /// Sees every write and removal just after it was done.
    void setWriteObserver(WriteObserver observer) { observer_ = std::move(observer); }
    /// The registered values live in the process and go with it; the stored ones stay.
    void forgetRegistered() { registered_.clear(); }

private:
    const DefaultsValue* find(const std::string& key) const;

    Values stored_;
    Values registered_;
    WriteObserver observer_;
};

}  // namespace velmo
