#pragma once

#include "ns_string.h"

namespace velmo::macos {

class NSDictionary : public ClassOf<NSDictionary, "NSDictionary", NSObject> {
public:
    /// Empty.
    static NSDictionary create() { return make<"init">(); }

    /// None where the key is not in it.
    Object objectForKey(const Object& key) const { return send<Object, "objectForKey:">(key); }
};

class NSMutableDictionary : public ClassOf<NSMutableDictionary, "NSMutableDictionary", NSDictionary> {
public:
    static NSMutableDictionary create() { return make<"init">(); }

    void setObject(const Object& object, const Object& key) const {
        send<void, "setObject:forKey:">(object, key);
    }
};

}  // namespace velmo::macos
