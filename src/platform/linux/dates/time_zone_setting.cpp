#include "time_zone_setting.h"

#include <fstream>
#include <sstream>
#include <string_view>
#include <system_error>

namespace velmo {

namespace {

namespace fs = std::filesystem;

/// Ten times what the longest zone takes.
constexpr std::streamsize largestFile = 65536;
constexpr int mostZoneLinks = 8;

std::string contentOf(const fs::path& file) {
    std::error_code error;
    // A pipe would never end.
    if (!fs::is_regular_file(file, error))
        return {};
    std::ifstream stream(file, std::ios::binary);
    std::string content(largestFile, '\0');
    stream.read(content.data(), largestFile);
    content.resize(static_cast<std::size_t>(stream.gcount()));
    return content;
}

/// The name of a zone's file below a folder of the database, wherever that lies.
std::string nameFromPath(const std::string& path) {
    constexpr std::string_view folder = "/zoneinfo/";
    const auto place = path.rfind(folder);
    if (place == std::string::npos)
        return {};
    std::string name = path.substr(place + folder.size());
    for (const std::string_view variant : {"posix/", "right/"}) {
        if (name.starts_with(variant))
            name.erase(0, variant.size());
    }
    return name;
}

/// The first name on the way from link to link: what the user has chosen, where the database has links
/// itself.
std::string nameFromLinks(fs::path file) {
    for (int link = 0; link < mostZoneLinks; ++link) {
        std::error_code error;
        const fs::path target = fs::read_symlink(file, error);
        if (error)
            break;
        file = (file.parent_path() / target).lexically_normal();
        if (auto name = nameFromPath(file); !name.empty())
            return name;
    }
    return {};
}

/// The name that stands beside a copy; an old one, of another zone, does not count.
std::string nameBeside(const TimeZoneFiles& files, const std::string& content) {
    std::string name;
    std::istringstream(contentOf(files.zoneName)) >> name;
    const bool isUsable = !name.empty() && name.front() != '/' && name.find("..") == std::string::npos;
    if (!isUsable || (!content.empty() && contentOf(files.database / name) != content))
        return {};
    return name;
}

TimeZoneSetting systemSetting(const TimeZoneFiles& files) {
    TimeZoneSetting setting;
    setting.file = contentOf(files.localTime);
    setting.name = nameFromLinks(files.localTime);
    if (setting.name.empty())
        setting.name = nameBeside(files, setting.file);
    if (setting.file.empty() && !setting.name.empty())
        setting.file = contentOf(files.database / setting.name);
    return setting;
}

std::string_view withoutColon(std::string_view variable) {
    return variable.starts_with(':') ? variable.substr(1) : variable;
}

TimeZoneSetting settingFromVariable(std::string_view zone, const TimeZoneFiles& files) {
    if (zone.empty())
        return {.name = "UTC"};
    if (zone.front() == '/')
        return {.name = nameFromPath(std::string(zone)), .file = contentOf(zone)};
    if (zone.find("..") == std::string_view::npos) {
        auto content = contentOf(files.database / zone);
        if (!content.empty())
            return {.name = std::string(zone), .file = std::move(content)};
    }
    return {.name = std::string(zone), .rules = std::string(zone)};
}

}  // namespace

bool overridesSystemTimeZone(const std::string& variable, const TimeZoneFiles& files) {
    return fs::path(withoutColon(variable)) != files.localTime;
}

TimeZoneSetting readTimeZoneSetting(const char* variable, const TimeZoneFiles& files) {
    if (variable && overridesSystemTimeZone(variable, files))
        return settingFromVariable(withoutColon(variable), files);
    return systemSetting(files);
}

}  // namespace velmo
