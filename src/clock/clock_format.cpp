#include "clock/clock_format.h"

namespace velmo {

// Two spaces widen the gap between date and time, and "h:mma" is meant to have none.
const std::vector<ClockFormat>& ClockFormat::presets() {
    static const std::vector<ClockFormat> presets{
        {"Day, date and time", "EEE d MMM  HH:mm"},
        {"Day, date and 12-hour time", "EEE MMM d  h:mm a"},
        {"Compact day and time", "d EEE h:mma"},
        {"Date and time", "d MMM  HH:mm"},
        {"Numeric date and time", "EEE d/M  HH:mm"},
        {"Time with seconds", "HH:mm:ss"},
        {"Week number, day, date and time", "'W'w  EEE d MMM  HH:mm"},
        {"Date only", "EEEE d MMMM"},
    };
    return presets;
}

std::string ClockFormat::preview(const std::string& pattern, Date date, Dates& dates) {
    const auto formatter = dates.makeDateFormatter();
    formatter->setDateFormat(pattern);
    const std::string text = formatter->string(date).value_or("");
    return text.empty() ? "(empty)" : text;
}

}  // namespace velmo
