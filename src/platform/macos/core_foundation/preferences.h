#pragma once

#include "macos/objc/function.h"
#include "macos/objc/global.h"

namespace velmo::macos::core_foundation {

extern "C" {
extern const Id kCFPreferencesAnyApplication;
extern const Id kCFPreferencesCurrentUser;
extern const Id kCFPreferencesCurrentHost;
Id CFPreferencesCopyValue(Id key, Id application, Id user, Id host);
void CFPreferencesSetValue(Id key, Id value, Id application, Id user, Id host);
unsigned char CFPreferencesSynchronize(Id application, Id user, Id host);
}

inline constexpr Global<&kCFPreferencesAnyApplication, Object> anyApplication;
inline constexpr Global<&kCFPreferencesCurrentUser, Object> currentUser;
inline constexpr Global<&kCFPreferencesCurrentHost, Object> currentHost;
inline constexpr Function<&CFPreferencesCopyValue> copyValue;
/// No value removes the key.
inline constexpr Function<&CFPreferencesSetValue> setValue;
inline constexpr Function<&CFPreferencesSynchronize> synchronize;

}  // namespace velmo::macos::core_foundation
