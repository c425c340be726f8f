#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace velmo {

/// One member of a JSON object, as far as settings need it.
struct JsonValue {
    enum class Kind { number, string, other };

    Kind kind = Kind::other;
    /// The string's characters, or the number as it was written.
    std::string text;

    /// Null where the value is no string.
    const std::string* asString() const { return kind == Kind::string ? &text : nullptr; }
    /// The number, however it is written. Absent where the value is no number, or one that is not whole, is
    /// negative or exceeds `maximum`.
    std::optional<std::uint64_t> asUnsigned(std::uint64_t maximum) const;
};

}  // namespace velmo
