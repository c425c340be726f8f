#pragma once

#include "global_preferences.h"

namespace velmo::macos {

/// The global preferences of the current user on the current host.
class MacosGlobalPreferences : public GlobalPreferences {
public:
    std::optional<Value> value(const std::string& key) const override;
    void setValue(const std::string& key, std::optional<std::int64_t> value) override;
    void synchronize() override;
};

}  // namespace velmo::macos
