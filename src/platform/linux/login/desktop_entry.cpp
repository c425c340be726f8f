#include "desktop_entry.h"

#include <algorithm>

namespace velmo {

namespace {

constexpr std::string_view mainGroup = "[Desktop Entry]";
constexpr std::string_view blanks = " \t\r";

std::string_view trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::string escaped(std::string_view text) {
    std::string value;
    for (const char character : text) {
        switch (character) {
            case '\n':
                value += "\\n";
                break;
            case '\r':
                value += "\\r";
                break;
            case '\t':
                value += "\\t";
                break;
            case '\\':
                value += "\\\\";
                break;
            default:
                value += character;
        }
    }
    // At an end of the line a space would be taken for one that is not meant.
    if (value.ends_with(' '))
        value.replace(value.size() - 1, 1, "\\s");
    if (value.starts_with(' '))
        value.replace(0, 1, "\\s");
    return value;
}

std::string unescaped(std::string_view value) {
    constexpr std::string_view letters = "sntr\\";
    constexpr std::string_view meanings = " \n\t\r\\";
    std::string text;
    for (std::size_t index = 0; index < value.size(); ++index) {
        const auto meaning = value[index] == '\\' && index + 1 < value.size() ? letters.find(value[index + 1])
                                                                              : std::string_view::npos;
        text += meaning == std::string_view::npos ? value[index] : meanings[meaning];
        index += meaning == std::string_view::npos ? 0 : 1;
    }
    return text;
}

bool isGroup(std::string_view line) {
    return line.starts_with('[');
}

}  // namespace

DesktopEntry::DesktopEntry(std::string_view text) {
    bool isInMainGroup = false;
    while (!text.empty()) {
        const auto end = std::min(text.find('\n'), text.size());
        const auto line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        if (isGroup(line))
            isInMainGroup = trimmed(line) == mainGroup;
        const auto equals = line.find('=');
        const bool hasKey =
            isInMainGroup && !line.starts_with('#') && !isGroup(line) && equals != std::string_view::npos;
        lines_.push_back(
            {std::string(line), hasKey ? std::string(trimmed(line.substr(0, equals))) : std::string()});
    }
}

std::optional<std::string> DesktopEntry::value(std::string_view key) const {
    const auto line =
        std::find_if(lines_.rbegin(), lines_.rend(), [key](const Line& other) { return other.key == key; });
    if (line == lines_.rend())
        return std::nullopt;
    return unescaped(trimmed(std::string_view(line->text).substr(line->text.find('=') + 1)));
}

bool DesktopEntry::isTrue(std::string_view key) const {
    const auto found = value(key);
    return found == "true" || found == "1";
}

bool DesktopEntry::isFalse(std::string_view key) const {
    const auto found = value(key);
    return found == "false" || found == "0";
}

void DesktopEntry::set(std::string_view key, std::string_view value) {
    if (std::none_of(lines_.begin(), lines_.end(), isMainGroup)) {
        // What belongs to no group then belongs to this one; nobody could read such a file otherwise.
        *this = DesktopEntry(std::string(mainGroup) + '\n' + text());
    }
    Line line{std::string(key) + "=" + escaped(value), std::string(key)};
    const auto last =
        std::find_if(lines_.rbegin(), lines_.rend(), [key](const Line& old) { return old.key == key; });
    if (last != lines_.rend())
        *last = std::move(line);
    else
        lines_.insert(endOfMainGroup(), std::move(line));
}

bool DesktopEntry::isMainGroup(const Line& line) {
    return isGroup(line.text) && trimmed(line.text) == mainGroup;
}

/// Where a key can be added.
std::vector<DesktopEntry::Line>::const_iterator DesktopEntry::endOfMainGroup() const {
    const auto group = std::find_if(lines_.begin(), lines_.end(), isMainGroup);
    auto end = std::find_if(group + 1, lines_.end(), [](const Line& line) { return isGroup(line.text); });
    // Before the empty lines that set the next group apart.
    while (trimmed((end - 1)->text).empty())
        --end;
    return end;
}

void DesktopEntry::remove(std::string_view key) {
    std::erase_if(lines_, [key](const Line& line) { return line.key == key; });
}

bool DesktopEntry::hasOnly(std::span<const std::string_view> keys) const {
    return std::all_of(lines_.begin(), lines_.end(), [keys](const Line& line) {
        const std::string_view key = std::string_view(line.key).substr(0, line.key.find('['));
        if (key.empty())
            return !isGroup(line.text) || trimmed(line.text) == mainGroup;
        return std::find(keys.begin(), keys.end(), key) != keys.end();
    });
}

std::string DesktopEntry::text() const {
    std::string text;
    for (const auto& line : lines_)
        text += line.text + '\n';
    return text;
}

}  // namespace velmo
