#pragma once

#include <filesystem>
#include <string>

namespace velmo {

/// The time zone that a system is set to, as far as it can tell.
struct TimeZoneSetting {
    /// As the time zone database calls it, e.g. "Europe/Berlin"; empty where unknown.
    std::string name;
    /// Content of the zone's file in the database's format (TZif); empty where there is none.
    std::string file;
    /// Rules as POSIX writes them into TZ, e.g. "CET-1CEST,M3.5.0,M10.5.0/3"; empty where there are none.
    std::string rules;

    bool operator==(const TimeZoneSetting&) const = default;
};

/// Where a system keeps its time zone.
struct TimeZoneFiles {
    /// A link to the zone's file in the database, or a copy of that.
    std::filesystem::path localTime = "/etc/localtime";
    /// Holds the name of the zone of which `localTime` may be a copy.
    std::filesystem::path zoneName = "/etc/timezone";
    std::filesystem::path database = "/usr/share/zoneinfo";
};

/// True where TZ has this value and so takes the place of the system's own setting.
bool overridesSystemTimeZone(const std::string& variable, const TimeZoneFiles& files);
/// Reads the setting; `variable` is what TZ is set to, or null.
TimeZoneSetting readTimeZoneSetting(const char* variable, const TimeZoneFiles& files);

}  // namespace velmo
