#pragma once

#include <compare>
#include <optional>
#include <string>

namespace velmo::status_notifier {

/// Where an item is on the bus.
struct ItemAddress {
    /// Well-known or unique.
    std::string service;
    std::string path;

    /// As watchers list it.
    std::string text() const { return service + path; }
    // The linter takes the zero that the compiler compares with for a pointer.
    auto operator<=>(const ItemAddress&) const = default;  // NOLINT(modernize-use-nullptr)
};

/// Reads what an item was registered under: a service's name, the path of an object of `sender`, or both,
/// one after the other. Absent where it is none of these.
std::optional<ItemAddress> parseItemAddress(const std::string& text, const std::string& sender);

}  // namespace velmo::status_notifier
