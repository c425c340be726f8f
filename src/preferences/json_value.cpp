#include "preferences/json_value.h"

#include <charconv>
#include <cmath>
#include <locale>
#include <sstream>

namespace velmo {
namespace {

// Not every standard library reads such numbers without a stream.
std::optional<double> numberIn(const std::string& text) {
    std::istringstream stream(text);
    stream.imbue(std::locale::classic());
    double number = 0;
    if (!(stream >> number))
        return std::nullopt;
    // What is too small for one is no zero.
    const bool isZero =
        text.substr(0, text.find_first_of("eE")).find_first_of("123456789") == std::string::npos;
    return (number == 0) == isZero ? std::optional(number) : std::nullopt;
}

}  // namespace

std::optional<std::uint64_t> JsonValue::asUnsigned(std::uint64_t maximum) const {
    if (kind != Kind::number)
        return std::nullopt;
    const char* begin = text.data();
    const char* end = begin + text.size();
    std::uint64_t whole = 0;
    const auto asWhole = std::from_chars(begin, end, whole);
    if (asWhole.ec == std::errc() && asWhole.ptr == end)
        return whole <= maximum ? std::optional(whole) : std::nullopt;
    if (text.find_first_of(".eE") == std::string::npos && text != "-0")
        return std::nullopt;
    const auto number = numberIn(text);
    constexpr double beyondLargest = 18446744073709551616.0;
    if (!number || *number < 0 || *number >= beyondLargest || *number != std::floor(*number))
        return std::nullopt;
    whole = static_cast<std::uint64_t>(*number);
    return whole <= maximum ? std::optional(whole) : std::nullopt;
}

}  // namespace velmo
