#pragma once

#include "ns_data.h"
#include "ns_dictionary.h"

namespace velmo::macos {

class NSUserDefaults : public ClassOf<NSUserDefaults, "NSUserDefaults", NSObject> {
public:
    static NSUserDefaults standard() { return sendToClass<NSUserDefaults, "standardUserDefaults">(); }

    void registerDefaults(const NSDictionary& values) const { send<void, "registerDefaults:">(values); }
    bool boolForKey(const NSString& key) const { return send<bool, "boolForKey:">(key); }
    double doubleForKey(const NSString& key) const { return send<double, "doubleForKey:">(key); }
    NSString stringForKey(const NSString& key) const { return send<NSString, "stringForKey:">(key); }
    NSData dataForKey(const NSString& key) const { return send<NSData, "dataForKey:">(key); }
    /// None where nothing is stored for the key.
    Object objectForKey(const NSString& key) const { return send<Object, "objectForKey:">(key); }
    void setBool(bool value, const NSString& key) const { send<void, "setBool:forKey:">(value, key); }
    void setDouble(double value, const NSString& key) const { send<void, "setDouble:forKey:">(value, key); }
    void setObject(const Object& value, const NSString& key) const {
        send<void, "setObject:forKey:">(value, key);
    }
    void removeObject(const NSString& key) const { send<void, "removeObjectForKey:">(key); }
};

}  // namespace velmo::macos
