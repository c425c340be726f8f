#include "tool_tip_text.h"

#include "linux/cut_text.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <string_view>

namespace velmo::status_notifier {

namespace {

constexpr std::size_t longestTitle = 200;
constexpr std::size_t longestDescription = 2000;
constexpr std::array<std::string_view, 12> keptTags = {"b",  "i",  "u",      "br", "p",  "ul",
                                                       "ol", "li", "strong", "em", "tt", "small"};
constexpr std::array<std::string_view, 7> keptEntities = {"amp", "lt", "gt", "quot", "apos", "nbsp", "#39"};

std::string cut(const std::string& text, std::size_t most) {
    if (text.size() <= most)
        return text;
    return std::string(cutText(text, most)) + "\u2026";
}

void escape(std::string& result, char character) {
    switch (character) {
        case '<':
            result += "&lt;";
            break;
        case '>':
            result += "&gt;";
            break;
        case '&':
            result += "&amp;";
            break;
        case '\n':
            result += "<br>";
            break;
        default:
            result += character;
    }
}

std::string escaped(const std::string& text) {
    std::string result;
    for (const char character : text)
        escape(result, character);
    return result;
}

/// What is kept of the tag between "<" and ">": its name without anything else.
std::string keptTag(std::string_view inside) {
    const bool closes = inside.starts_with('/');
    if (closes)
        inside.remove_prefix(1);
    std::string name;
    for (const char character : inside) {
        if (std::isalnum(static_cast<unsigned char>(character)) == 0)
            break;
        name += static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
    }
    if (std::find(keptTags.begin(), keptTags.end(), name) == keptTags.end())
        return {};
    return (closes ? "</" : "<") + name + ">";
}

/// True where `<` begins a tag, and not a sum.
bool beginsTag(std::string_view rest) {
    const auto first = rest.size() > 1 ? static_cast<unsigned char>(rest[1]) : 0;
    return (std::isalpha(first) != 0 || first == '/' || first == '!' || first == '?') &&
           rest.find('>') != std::string_view::npos;
}

std::size_t entityLength(std::string_view rest) {
    for (const auto entity : keptEntities) {
        if (rest.substr(1).starts_with(entity) && rest.size() > entity.size() + 1 &&
            rest[entity.size() + 1] == ';')
            return entity.size() + 2;
    }
    return 0;
}

std::string sanitized(const std::string& text) {
    std::string result;
    const std::string_view view = text;
    for (std::size_t place = 0; place < view.size();) {
        const auto rest = view.substr(place);
        if (rest.front() == '<' && beginsTag(rest)) {
            const auto end = rest.find('>');
            result += keptTag(rest.substr(1, end - 1));
            place += end + 1;
        } else if (const auto length = rest.front() == '&' ? entityLength(rest) : 0; length > 0) {
            result += rest.substr(0, length);
            place += length;
        } else {
            escape(result, rest.front());
            ++place;
        }
    }
    return result;
}

}  // namespace

std::string toolTipMarkup(const std::string& title, const std::string& description) {
    const std::string head = escaped(cut(title, longestTitle));
    const std::string body = sanitized(cut(description, longestDescription));
    if (head.empty() || body.empty())
        return head + body;
    return "<b>" + head + "</b><br>" + body;
}

}  // namespace velmo::status_notifier
