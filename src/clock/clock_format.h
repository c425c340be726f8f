#pragma once

#include "platform/dates.h"

#include <string>
#include <vector>

namespace velmo {

/// A date pattern with a name.
struct ClockFormat {
    std::string name;
    /// Unicode date field symbols.
    std::string pattern;

    /// What tells it from others in a list.
    const std::string& id() const { return pattern; }

    bool operator==(const ClockFormat&) const = default;

    /// In the order in which the user chooses among them.
    static const std::vector<ClockFormat>& presets();
    /// The date by a pattern; "(empty)" where that gives nothing.
    static std::string preview(const std::string& pattern, Date date, Dates& dates);
};

}  // namespace velmo

template <>
struct std::hash<velmo::ClockFormat> {
    std::size_t operator()(const velmo::ClockFormat& format) const noexcept {
        const std::hash<std::string> text;
        return text(format.name) * 31 + text(format.pattern);
    }
};
