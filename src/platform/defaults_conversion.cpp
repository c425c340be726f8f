#include "defaults_conversion.h"

#include <array>
#include <charconv>

namespace velmo::defaults_conversion {

namespace {

constexpr const char* blanks = " \t\n\r";

double leadingNumber(const std::string& text) {
    const auto start = text.find_first_not_of(blanks);
    if (start == std::string::npos)
        return 0;
    const char* begin = text.data() + start;
    const char* end = text.data() + text.size();
    if (*begin == '+')
        ++begin;
    double number = 0;
    std::from_chars(begin, end, number, std::chars_format::general);
    return number;
}

}  // namespace

bool toBool(const DefaultsValue& value) {
    if (const auto* flag = std::get_if<bool>(&value))
        return *flag;
    if (const auto* number = std::get_if<double>(&value))
        return *number != 0;
    if (const auto* text = std::get_if<std::string>(&value)) {
        const auto start = text->find_first_not_of(blanks);
        if (start != std::string::npos && std::string("YyTt").find((*text)[start]) != std::string::npos)
            return true;
        return leadingNumber(*text) != 0;
    }
    return false;
}

double toDouble(const DefaultsValue& value) {
    if (const auto* flag = std::get_if<bool>(&value))
        return *flag ? 1 : 0;
    if (const auto* number = std::get_if<double>(&value))
        return *number;
    if (const auto* text = std::get_if<std::string>(&value))
        return leadingNumber(*text);
    return 0;
}

std::optional<std::string> toString(const DefaultsValue& value) {
    if (const auto* text = std::get_if<std::string>(&value))
        return *text;
    if (const auto* flag = std::get_if<bool>(&value))
        return *flag ? "1" : "0";
    if (const auto* number = std::get_if<double>(&value)) {
        std::array<char, 32> buffer{};
        const auto written = std::to_chars(buffer.data(), buffer.data() + buffer.size(), *number);
        return std::string(buffer.data(), written.ptr);
    }
    return std::nullopt;
}

}  // namespace velmo::defaults_conversion
