#include "desktop_settings.h"

#include "linux/x11/selection.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <cmath>
#include <optional>
#include <sstream>
#include <string_view>

namespace velmo::x11 {

namespace {

constexpr std::uint32_t propertyLimit = 1 << 20;
constexpr double standardResolution = 96;
/// Between two looks at settings that change without end: after each, everything may be laid out and drawn
/// anew.
constexpr Seconds pauseAfterReading = 0.1;

/// Reads numbers and texts from a property in the byte order of its writer; every value is padded to
/// four bytes. Past the end it yields nothing.
class Reader {
public:
    Reader(const std::vector<std::uint8_t>& bytes, bool bigEndian) : bytes_(bytes), bigEndian_(bigEndian) {}

    std::optional<std::uint32_t> number(std::size_t size) {
        if (bytes_.size() - place_ < size)
            return std::nullopt;
        std::uint32_t value = 0;
        for (std::size_t index = 0; index < size; ++index) {
            const auto byte = bytes_[place_ + (bigEndian_ ? index : size - 1 - index)];
            value = value << 8 | byte;
        }
        place_ += size;
        return value;
    }

    std::optional<std::string> text(std::size_t length) {
        const std::size_t padded = (length + 3) / 4 * 4;
        if (length > bytes_.size() || bytes_.size() - place_ < padded)
            return std::nullopt;
        const auto begin = bytes_.begin() + static_cast<std::ptrdiff_t>(place_);
        std::string value(begin, begin + static_cast<std::ptrdiff_t>(length));
        place_ += padded;
        return value;
    }

private:
    const std::vector<std::uint8_t>& bytes_;
    bool bigEndian_;
    std::size_t place_ = 0;
};

enum XSettingType : std::uint32_t { xSettingInteger = 0, xSettingText = 1, xSettingColor = 2 };

std::optional<std::pair<std::string, XSetting>> readSetting(Reader& reader) {
    const auto type = reader.number(1);
    const auto unused = reader.number(1);
    const auto nameLength = reader.number(2);
    if (!type || !unused || !nameLength)
        return std::nullopt;
    auto name = reader.text(*nameLength);
    const auto serial = reader.number(4);
    if (!name || !serial)
        return std::nullopt;
    if (*type == xSettingInteger) {
        const auto value = reader.number(4);
        if (!value)
            return std::nullopt;
        return std::pair(*std::move(name), XSetting(static_cast<std::int32_t>(*value)));
    }
    if (*type == xSettingText) {
        const auto length = reader.number(4);
        auto value = length ? reader.text(*length) : std::nullopt;
        if (!value)
            return std::nullopt;
        return std::pair(*std::move(name), XSetting(*std::move(value)));
    }
    if (*type == xSettingColor && reader.number(4) && reader.number(4))
        return std::pair(*std::move(name), XSetting(0));
    return std::nullopt;
}

template <typename Type>
std::optional<Type> valueOf(const std::map<std::string, XSetting>& settings, const std::string& name) {
    const auto found = settings.find(name);
    const auto* value = found == settings.end() ? nullptr : std::get_if<Type>(&found->second);
    return value ? std::optional(*value) : std::nullopt;
}

std::optional<double> resolutionFrom(const std::string& resources) {
    constexpr std::string_view name = "Xft.dpi:";
    std::istringstream lines(resources);
    for (std::string line; std::getline(lines, line);) {
        if (!line.starts_with(name))
            continue;
        const auto start = line.find_first_not_of(" \t", name.size());
        double value = 0;
        if (start != std::string::npos &&
            std::from_chars(line.data() + start, line.data() + line.size(), value).ec == std::errc())
            return value;
    }
    return std::nullopt;
}

/// Reads "#rgb", "#rrggbb" and "#rrrrggggbbbb".
std::optional<Color> colorFromHexadecimal(std::string_view text) {
    if (text.empty() || text.front() != '#' || text.size() % 3 != 1 || text.size() > 13)
        return std::nullopt;
    const std::size_t digits = text.size() / 3;
    std::array<double, 3> parts{};
    for (std::size_t index = 0; index < parts.size(); ++index) {
        const char* begin = text.data() + 1 + index * digits;
        unsigned value = 0;
        const auto [end, error] = std::from_chars(begin, begin + digits, value, 16);
        if (error != std::errc() || end != begin + digits)
            return std::nullopt;
        parts.at(index) = value / static_cast<double>((1U << (4 * digits)) - 1);
    }
    return Color{parts[0], parts[1], parts[2]};
}

/// A scheme names the colours of a theme, "name: colour" each, in lines or between semicolons.
std::optional<Color> colorInScheme(const std::string& scheme, std::string_view name) {
    constexpr const char* separators = "\n;";
    for (std::size_t start = 0; start < scheme.size();) {
        const auto end = std::min(scheme.find_first_of(separators, start), scheme.size());
        const std::string_view entry(scheme.data() + start, end - start);
        start = end + 1;
        const auto nameStart = entry.find_first_not_of(' ');
        const auto colon = entry.find(':');
        if (nameStart == std::string_view::npos || colon == std::string_view::npos || colon < nameStart ||
            entry.substr(nameStart, colon - nameStart) != name)
            continue;
        const auto value = entry.find_first_not_of(' ', colon + 1);
        if (value == std::string_view::npos)
            return std::nullopt;
        return colorFromHexadecimal(entry.substr(value, entry.find_last_not_of(' ') + 1 - value));
    }
    return std::nullopt;
}

bool namesDarkTheme(std::string theme) {
    std::transform(theme.begin(), theme.end(), theme.begin(),
                   [](unsigned char character) { return static_cast<char>(std::tolower(character)); });
    return theme.find("dark") != std::string::npos;
}

}  // namespace

std::map<std::string, XSetting> parseXSettings(const std::vector<std::uint8_t>& content) {
    std::map<std::string, XSetting> settings;
    if (content.empty())
        return settings;
    Reader reader(content, content.front() == XCB_IMAGE_ORDER_MSB_FIRST);
    // The byte order in the first of four bytes, then a serial number.
    reader.number(4);
    reader.number(4);
    const auto count = reader.number(4).value_or(0);
    for (std::uint32_t index = 0; index < count; ++index) {
        auto setting = readSetting(reader);
        if (!setting)
            break;
        settings.insert_or_assign(std::move(setting->first), std::move(setting->second));
    }
    return settings;
}

Appearance appearanceFrom(const std::map<std::string, XSetting>& settings, const std::string& resources) {
    constexpr double unitsOfResolution = 1024;
    double scale = valueOf<std::int32_t>(settings, "Gdk/WindowScalingFactor").value_or(1);
    if (const auto resolution = valueOf<std::int32_t>(settings, "Xft/DPI"); resolution && *resolution > 0)
        scale = std::max(scale, *resolution / unitsOfResolution / standardResolution);
    else if (const auto fallback = resolutionFrom(resources); fallback && std::isfinite(*fallback))
        scale = std::max(scale, *fallback / standardResolution);

    Appearance appearance;
    appearance.scale = std::clamp(std::round(scale * 4) / 4, 1.0, 4.0);
    appearance.dark = valueOf<std::int32_t>(settings, "Gtk/ApplicationPreferDarkTheme").value_or(0) != 0 ||
                      namesDarkTheme(valueOf<std::string>(settings, "Net/ThemeName").value_or(""));
    appearance.font = valueOf<std::string>(settings, "Gtk/FontName").value_or("");
    appearance.iconTheme = valueOf<std::string>(settings, "Net/IconThemeName").value_or("");
    appearance.accent =
        colorInScheme(valueOf<std::string>(settings, "Gtk/ColorScheme").value_or(""), "selected_bg_color");
    return appearance;
}

DesktopSettings::DesktopSettings(Connection& connection)
    : connection_(connection),
      reading_(connection.loop(), pauseAfterReading, [this] { read(); }),
      following_(connection.loop(), pauseAfterReading, [this] { followManager(); }) {
    rootEvents_ = connection.onWindow(connection.root(), [this](const xcb_generic_event_t& event) {
        const auto type = event.response_type & 0x7f;
        const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
        const auto& property = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        if (type == XCB_CLIENT_MESSAGE && message.type == connection_.atoms().manager &&
            message.data.data32[1] == connection_.atoms().xsettingsSelection)
            following_.request();
        else if (type == XCB_PROPERTY_NOTIFY && property.atom == XCB_ATOM_RESOURCE_MANAGER)
            reading_.request();
    });
    followManager();
}

void DesktopSettings::followManager() {
    manager_ = selectionOwner(connection_, connection_.atoms().xsettingsSelection);
    managerEvents_ = {};
    if (manager_ != XCB_WINDOW_NONE) {
        connection_.selectEvents(manager_, XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY);
        managerEvents_ = connection_.onWindow(manager_, [this](const xcb_generic_event_t& event) {
            const auto type = event.response_type & 0x7f;
            if (type == XCB_DESTROY_NOTIFY)
                following_.request();
            else if (type == XCB_PROPERTY_NOTIFY)
                reading_.request();
        });
    }
    read();
}

void DesktopSettings::setPrefersDark(std::optional<bool> prefersDark) {
    prefersDark_ = prefersDark;
    reading_.request();
}

void DesktopSettings::read() {
    const auto& atoms = connection_.atoms();
    std::map<std::string, XSetting> settings;
    if (manager_ != XCB_WINDOW_NONE)
        settings = parseXSettings(
            connection_.property(manager_, atoms.xsettingsSettings, atoms.xsettingsSettings, propertyLimit));
    const auto resources =
        connection_.property(connection_.root(), XCB_ATOM_RESOURCE_MANAGER, XCB_ATOM_STRING, propertyLimit);
    auto appearance = appearanceFrom(settings, {resources.begin(), resources.end()});
    appearance.dark = prefersDark_.value_or(appearance.dark);
    if (appearance == appearance_)
        return;
    appearance_ = appearance;
    listeners_.notify();
}

}  // namespace velmo::x11
