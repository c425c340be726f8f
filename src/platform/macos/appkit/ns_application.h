#pragma once

#include "ns_event.h"
#include "ns_menu.h"
#include "ns_window.h"

namespace velmo::macos {

enum class NSApplicationActivationPolicy : NSInteger {};

template <>
inline constexpr std::string_view frameworkName<NSApplicationActivationPolicy> =
    "NSApplicationActivationPolicy";

class NSApplication : public ClassOf<NSApplication, "NSApplication", NSObject> {
public:
    static NSApplication shared() { return sendToClass<NSApplication, "sharedApplication">(); }

    /// Not retained.
    void setDelegate(const Object& delegate) const { send<void, "setDelegate:">(delegate); }
    void setActivationPolicy(NSApplicationActivationPolicy policy) const {
        send<bool, "setActivationPolicy:">(policy);
    }
    void setMainMenu(const NSMenu& menu) const { send<void, "setMainMenu:">(menu); }
    void run() const { send<void, "run">(); }
    void activateIgnoringOtherApps(bool ignoring) const {
        send<void, "activateIgnoringOtherApps:">(ignoring);
    }
    void terminate() const { send<void, "terminate:">(Object()); }
    /// None while no window of the application has the keyboard.
    NSWindow keyWindow() const { return send<NSWindow, "keyWindow">(); }
    NSEvent currentEvent() const { return send<NSEvent, "currentEvent">(); }
};

}  // namespace velmo::macos
