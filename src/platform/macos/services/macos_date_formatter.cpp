#include "macos_date_formatter.h"

namespace velmo::macos {

MacosDateFormatter::MacosDateFormatter() {
    formatter_.setLocale(NSLocale::autoupdatingCurrent());
}

void MacosDateFormatter::setDateFormat(const std::string& pattern) {
    formatter_.setDateFormat(NSString::from(pattern));
}

std::optional<std::string> MacosDateFormatter::string(Date date) const {
    // The formatter keeps the time zone that it had at first.
    if (const NSTimeZone zone = NSTimeZone::system(); !zone.isEqual(zone_)) {
        zone_ = zone;
        formatter_.setTimeZone(zone);
    }
    const NSString text = formatter_.string(NSDate::with(date));
    return text ? std::optional(text.text()) : std::nullopt;
}

}  // namespace velmo::macos
