#include "macos_dates.h"

#include "notification_target.h"

#include <memory>
#include <utility>

namespace velmo::macos {
namespace {

/// The fields that are shown; their order in the text is the locale's.
const char* fieldsOf(DateStyle style) {
    switch (style) {
        case DateStyle::time:
            return "jms";
        case DateStyle::fullDate:
            return "yMMMMEEEEd";
        case DateStyle::monthAndYear:
            break;
    }
    return "yMMMM";
}

}  // namespace

std::unique_ptr<DateFormatter> MacosDates::makeDateFormatter() {
    return std::make_unique<MacosDateFormatter>();
}

std::string MacosDates::formatted(Date date, DateStyle style) const {
    // The user may have changed the language or the hours of the day since.
    const std::string pattern =
        NSDateFormatter::formatFromTemplate(NSString::from(fieldsOf(style)), NSLocale::autoupdatingCurrent())
            .text();
    KeptFormatter& kept = formatters_[style];
    if (kept.pattern != pattern) {
        kept.formatter.setDateFormat(pattern);
        kept.pattern = pattern;
    }
    return kept.formatter.string(date).value_or("");
}

std::unique_ptr<NotificationObserver> MacosDates::observeTimeZone(std::function<void()> handler) {
    return std::make_unique<NotificationTarget>(systemTimeZoneDidChange.value(),
                                                [handler = std::move(handler), reset = timeZoneReset_] {
                                                    if (reset->resetUnlessJustDone())
                                                        handler();
                                                });
}

}  // namespace velmo::macos
