#include "macos_date_formatter.h"

namespace velmo::macos {

MacosDateFormatter::MacosDateFormatter() {
    formatter_.setLocale(NSLocale::autoupdatingCurrent());
}

void MacosDateFormatter::setDateFormat(const std::string& pattern) {
    formatter_.setDateFormat(NSString::from(pattern));
}

std::optional<std::string> MacosDateFormatter::string(Date date) const {
    const NSString text = formatter_.string(NSDate::with(date));
    return text ? std::optional(text.text()) : std::nullopt;
}

}  // namespace velmo::macos
