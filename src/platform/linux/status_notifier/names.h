#pragma once

#include <array>
#include <string>

/// What the protocol calls things. It has two families of names, whose members mean the same.
namespace velmo::status_notifier {

inline const std::array<std::string, 2> families = {"org.kde", "org.freedesktop"};

inline constexpr const char* watcherPath = "/StatusNotifierWatcher";
inline constexpr const char* propertiesInterface = "org.freedesktop.DBus.Properties";
inline constexpr const char* menuInterface = "com.canonical.dbusmenu";

inline std::string watcherName(const std::string& family) {
    return family + ".StatusNotifierWatcher";
}

/// Of the host in this process.
inline std::string hostName(const std::string& family, int process) {
    return family + ".StatusNotifierHost-" + std::to_string(process);
}

inline std::string itemInterface(const std::string& family) {
    return family + ".StatusNotifierItem";
}

}  // namespace velmo::status_notifier
