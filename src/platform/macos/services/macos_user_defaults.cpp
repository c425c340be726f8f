#include "macos_user_defaults.h"

#include "macos/foundation/ns_number.h"

namespace velmo::macos {
namespace {

Object defaultsObject(const DefaultsValue& value) {
    if (const auto* flag = std::get_if<bool>(&value))
        return NSNumber::with(*flag);
    if (const auto* number = std::get_if<double>(&value))
        return NSNumber::with(*number);
    if (const auto* text = std::get_if<std::string>(&value))
        return NSString::from(*text);
    return NSData::from(std::get<Data>(value));
}

}  // namespace

void MacosUserDefaults::registerDefaults(const std::map<std::string, DefaultsValue>& values) {
    const NSMutableDictionary registered = NSMutableDictionary::create();
    for (const auto& [key, value] : values)
        registered.setObject(defaultsObject(value), NSString::from(key));
    defaults_.registerDefaults(registered);
}

bool MacosUserDefaults::boolForKey(const std::string& key) const {
    return defaults_.boolForKey(NSString::from(key));
}

double MacosUserDefaults::doubleForKey(const std::string& key) const {
    return defaults_.doubleForKey(NSString::from(key));
}

std::optional<std::string> MacosUserDefaults::stringForKey(const std::string& key) const {
    const NSString text = defaults_.stringForKey(NSString::from(key));
    return text ? std::optional(text.text()) : std::nullopt;
}

std::optional<Data> MacosUserDefaults::dataForKey(const std::string& key) const {
    const NSData data = defaults_.dataForKey(NSString::from(key));
    return data ? std::optional(data.bytes()) : std::nullopt;
}

void MacosUserDefaults::setBool(bool value, const std::string& key) {
    defaults_.setBool(value, NSString::from(key));
}

void MacosUserDefaults::setDouble(double value, const std::string& key) {
    defaults_.setDouble(value, NSString::from(key));
}

void MacosUserDefaults::setObject(const DefaultsValue& value, const std::string& key) {
    // What is no text cannot be stored, and asking for it would end the program.
    if (const Object object = defaultsObject(value))
        defaults_.setObject(object, NSString::from(key));
}

void MacosUserDefaults::removeObject(const std::string& key) {
    defaults_.removeObject(NSString::from(key));
}

}  // namespace velmo::macos
