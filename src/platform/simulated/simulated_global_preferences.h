#pragma once

#include "global_preferences.h"

#include <map>
#include <utility>
#include <vector>

namespace velmo {

class SimulatedGlobalPreferences : public GlobalPreferences {
public:
    std::optional<Value> value(const std::string& key) const override {
        const auto found = values_.find(key);
        return found == values_.end() ? std::nullopt : std::optional(found->second);
    }
    void setValue(const std::string& key, std::optional<std::int64_t> value) override {
        calls_.push_back(key);
        if (refuses_)
            return;
        if (value)
            values_[key] = static_cast<double>(*value);
        else
            values_.erase(key);
    }
    void synchronize() override { calls_.emplace_back("synchronize"); }

    /// As somebody else would write it.
    void put(const std::string& key, Value value) { values_[key] = std::move(value); }
    /// Nothing that the program sets takes effect from now on.
    void setRefuses(bool refuses) { refuses_ = refuses; }
    /// The keys that were set, and "synchronize", in order.
    const std::vector<std::string>& calls() const { return calls_; }

private:
    std::map<std::string, Value> values_;
    bool refuses_ = false;
    std::vector<std::string> calls_;
};

}  // namespace velmo
