#include "address.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace velmo {

namespace {

constexpr std::size_t longestAddress = 8192;
/// What may stand in an address beside letters, digits and escapes.
constexpr std::string_view marks = "-._~:/?#[]@!$&'()*+,;=";

bool isLetter(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

bool isHexDigit(char character) {
    return isDigit(character) || (character >= 'a' && character <= 'f') ||
           (character >= 'A' && character <= 'F');
}

bool isScheme(std::string_view text) {
    return !text.empty() && isLetter(text.front()) &&
           std::all_of(text.begin(), text.end(), [](char character) {
               return isLetter(character) || isDigit(character) || character == '+' || character == '-' ||
                      character == '.';
           });
}

bool isWellFormed(std::string_view text) {
    for (std::size_t index = 0; index < text.size(); ++index) {
        const char character = text[index];
        if (character == '%') {
            if (text.size() - index < 3 || !isHexDigit(text[index + 1]) || !isHexDigit(text[index + 2]))
                return false;
        } else if (!isLetter(character) && !isDigit(character) &&
                   marks.find(character) == std::string_view::npos) {
            return false;
        }
    }
    return true;
}

/// Pages of the web are on a host.
bool hasHost(std::string_view path) {
    return path.size() > 2 && path.starts_with("//") && path[2] != '/';
}

}  // namespace

std::optional<Address> parseAddress(const std::string& text) {
    const auto colon = text.find(':');
    if (text.size() > longestAddress || colon == std::string::npos || colon + 1 == text.size())
        return std::nullopt;
    Address address;
    address.scheme = text.substr(0, colon);
    if (!isScheme(address.scheme) || !isWellFormed(text))
        return std::nullopt;
    for (char& character : address.scheme) {
        if (character >= 'A' && character <= 'Z')
            character = static_cast<char>(character - 'A' + 'a');
    }
    const auto question = text.find('?', colon + 1);
    address.path = text.substr(colon + 1, question == std::string::npos ? question : question - colon - 1);
    if (question != std::string::npos)
        address.query = text.substr(question + 1);
    if ((address.scheme == "http" || address.scheme == "https") && !hasHost(address.path))
        return std::nullopt;
    return address;
}

}  // namespace velmo
