#include "simulated/simulated_user_defaults.h"

#include "defaults_conversion.h"

namespace velmo {

void SimulatedUserDefaults::registerDefaults(const std::map<std::string, DefaultsValue>& values) {
    for (const auto& [key, value] : values)
        registered_.insert_or_assign(key, value);
}

const DefaultsValue* SimulatedUserDefaults::find(const std::string& key) const {
    for (const Values* values : {&stored_, &registered_}) {
        if (const auto found = values->find(key); found != values->end())
            return &found->second;
    }
    return nullptr;
}

bool SimulatedUserDefaults::boolForKey(const std::string& key) const {
    const auto* value = find(key);
    return value != nullptr && defaults_conversion::toBool(*value);
}

double SimulatedUserDefaults::doubleForKey(const std::string& key) const {
    const auto* value = find(key);
    return value != nullptr ? defaults_conversion::toDouble(*value) : 0;
}

std::optional<std::string> SimulatedUserDefaults::stringForKey(const std::string& key) const {
    const auto* value = find(key);
    return value != nullptr ? defaults_conversion::toString(*value) : std::nullopt;
}

std::optional<Data> SimulatedUserDefaults::dataForKey(const std::string& key) const {
    const auto* value = find(key);
    const auto* data = value != nullptr ? std::get_if<Data>(value) : nullptr;
    return data != nullptr ? std::optional(*data) : std::nullopt;
}

void SimulatedUserDefaults::setBool(bool value, const std::string& key) {
    setObject(value, key);
}

void SimulatedUserDefaults::setDouble(double value, const std::string& key) {
    setObject(value, key);
}

void SimulatedUserDefaults::setObject(const DefaultsValue& value, const std::string& key) {
    stored_.insert_or_assign(key, value);
    if (observer_)
        observer_(key, value);
}

void SimulatedUserDefaults::removeObject(const std::string& key) {
    stored_.erase(key);
    if (observer_)
        observer_(key, std::nullopt);
}

}  // namespace velmo
