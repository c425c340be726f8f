#pragma once

#include <array>
#include <string>

/// What the protocol calls things. It has two families of names, whose members mean the same.
namespace velmo::status_notifier {

inline const std::array<std::string, 2> families = {"org.kde", "org.freedesktop"};

inline constexpr const char* watcherPath = "/StatusNotifierWatcher";
inline constexpr const char* hostPath = "/StatusNotifierHost";
inline constexpr const char* busName = "org.freedesktop.DBus";
inline constexpr const char* busPath = "/org/freedesktop/DBus";
inline constexpr const char* propertiesInterface = "org.freedesktop.DBus.Properties";
inline constexpr const char* menuInterface = "com.canonical.dbusmenu";

inline std::string watcherName(const std::string& family) {
    return family + ".StatusNotifierWatcher";
}

inline std::string itemInterface(const std::string& family) {
    return family + ".StatusNotifierItem";
}

}  // namespace velmo::status_notifier
