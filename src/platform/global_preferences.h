#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>

namespace velmo {

/// Points, as whole numbers: the gap between items of the menu bar, and the margin of an item's highlight.
inline constexpr const char* statusItemSpacingKey = "NSStatusItemSpacing";
inline constexpr const char* statusItemSelectionPaddingKey = "NSStatusItemSelectionPadding";

/// Settings of the current user on the current host that are meant for every application.
class GlobalPreferences {
public:
    /// A number, or something of another type.
    using Value = std::variant<double, std::string>;

    virtual ~GlobalPreferences() = default;

    /// Absent where the key is not set in this very scope.
    virtual std::optional<Value> value(const std::string& key) const = 0;
    /// An absent value removes the key.
    virtual void setValue(const std::string& key, std::optional<std::int64_t> value) = 0;
    /// Writes what was set to where others read it, and reads what others have written.
    virtual void synchronize() = 0;
};

}  // namespace velmo
