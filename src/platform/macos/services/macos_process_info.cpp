#include "macos_process_info.h"

namespace velmo::macos {

std::optional<std::string> MacosProcessInfo::environment(const std::string& name) const {
    const auto value = as<NSString>(process_.environment().objectForKey(NSString::from(name)));
    return value ? std::optional(value.text()) : std::nullopt;
}

}  // namespace velmo::macos
