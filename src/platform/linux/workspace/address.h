#pragma once

#include <optional>
#include <string>

namespace velmo {

/// An address in its parts: scheme, a colon, then what the scheme makes of the rest.
struct Address {
    /// In lower case.
    std::string scheme;
    /// What lies between the colon and the first question mark.
    std::string path;
    /// What follows the question mark.
    std::string query;

    bool operator==(const Address&) const = default;
};

/// Absent where the text is no well-formed address.
std::optional<Address> parseAddress(const std::string& text);

}  // namespace velmo
