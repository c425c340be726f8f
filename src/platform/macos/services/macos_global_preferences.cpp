#include "macos_global_preferences.h"

#include "macos/core_foundation/preferences.h"
#include "macos/foundation/ns_number.h"

namespace velmo::macos {

std::optional<GlobalPreferences::Value> MacosGlobalPreferences::value(const std::string& key) const {
    const Object found = core_foundation::copyValue(
        NSString::from(key).get(), core_foundation::anyApplication.value().get(),
        core_foundation::currentUser.value().get(), core_foundation::currentHost.value().get());
    if (!found)
        return std::nullopt;
    if (const auto number = as<NSNumber>(found))
        return number.doubleValue();
    return as<NSString>(found).text();
}

void MacosGlobalPreferences::setValue(const std::string& key, std::optional<std::int64_t> value) {
    const NSNumber number = value ? NSNumber::with(NSInteger{*value}) : NSNumber();
    core_foundation::setValue(
        NSString::from(key).get(), number.get(), core_foundation::anyApplication.value().get(),
        core_foundation::currentUser.value().get(), core_foundation::currentHost.value().get());
}

void MacosGlobalPreferences::synchronize() {
    core_foundation::synchronize(core_foundation::anyApplication.value().get(),
                                 core_foundation::currentUser.value().get(),
                                 core_foundation::currentHost.value().get());
}

}  // namespace velmo::macos
