#pragma once

#include "linux/dates/icu/local_time_type.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace velmo {

/// A zone of the time zone database, as compiled files (TZif) hold it.
struct TzifZone {
    struct Transition {
        /// Seconds since 1970-01-01 00:00 UTC, at most a hundred thousand years.
        std::int64_t time = 0;
        /// An index of `types`, from then on.
        std::size_t type = 0;
    };

    /// At least one. The first holds before the first transition.
    std::vector<LocalTimeType> types;
    /// In the order of their times.
    std::vector<Transition> transitions;
    /// What holds after the last transition, as POSIX writes it; may be empty.
    std::string rules;
};

/// Absent where the content is damaged or something else.
std::optional<TzifZone> parseTzif(const std::string& content);

}  // namespace velmo
