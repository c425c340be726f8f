#pragma once

#include "macos/objc/class_of.h"

namespace velmo::macos {

class NSObject : public ClassOf<NSObject, "NSObject", Object> {
public:
    static NSObject create() { return make<"init">(); }

    bool isKindOfClass(RawClass other) const { return send<bool, "isKindOfClass:">(other); }
    bool respondsTo(Selector selector) const { return send<bool, "respondsToSelector:">(selector); }
    bool isEqual(const Object& other) const { return send<bool, "isEqual:">(other); }
};

/// The same object as one of another class; none where it is not of that class.
template <typename To>
To as(const Object& object) {
    if (!object || !Object::share<NSObject>(object.get()).isKindOfClass(classNamed<To::className>()))
        return {};
    return Object::share<To>(object.get());
}

}  // namespace velmo::macos
