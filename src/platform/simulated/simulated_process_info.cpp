#include "simulated/simulated_process_info.h"

namespace velmo {

std::optional<std::string> SimulatedProcessInfo::environment(const std::string& name) const {
    const auto found = environment_.find(name);
    return found != environment_.end() ? std::optional(found->second) : std::nullopt;
}

void SimulatedProcessInfo::setEnvironment(const std::string& name, const std::optional<std::string>& value) {
    if (value)
        environment_.insert_or_assign(name, *value);
    else
        environment_.erase(name);
}

}  // namespace velmo
