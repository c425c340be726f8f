#pragma once

#include "macos/objc/global.h"
#include "ns_string.h"

namespace velmo::macos {

extern "C" const Id NSSystemTimeZoneDidChangeNotification;
inline constexpr Global<&NSSystemTimeZoneDidChangeNotification, NSString> systemTimeZoneDidChange;

class NSNotification : public ClassOf<NSNotification, "NSNotification", NSObject> {};

class NSNotificationCenter : public ClassOf<NSNotificationCenter, "NSNotificationCenter", NSObject> {
public:
    static NSNotificationCenter defaultCenter() {
        return sendToClass<NSNotificationCenter, "defaultCenter">();
    }

    /// Sends the message to the observer, which is not retained, whenever somebody posts the notification.
    void add(const Object& observer, Selector message, const NSString& name) const {
        send<void, "addObserver:selector:name:object:">(observer, message, name, Object());
    }
    void remove(const Object& observer) const { send<void, "removeObserver:">(observer); }
};

}  // namespace velmo::macos
