#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace velmo::macos {

/// A text that can be an argument of a template.
template <std::size_t size>
struct FixedString {
    char characters[size]{};

    // NOLINTNEXTLINE(google-explicit-constructor): written as a plain text where it is used.
    constexpr FixedString(const char (&text)[size]) { std::copy_n(text, size, characters); }

    constexpr std::string_view view() const { return {characters, size - 1}; }
    constexpr const char* text() const { return characters; }
    constexpr bool isEmpty() const { return size == 1; }
};

/// How many arguments the method of a selector takes.
constexpr std::size_t argumentCount(std::string_view selector) {
    return static_cast<std::size_t>(std::count(selector.begin(), selector.end(), ':'));
}

}  // namespace velmo::macos
