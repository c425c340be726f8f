#include "icu_date_formatter.h"

#include <unicode/calendar.h>

#include <cmath>

namespace velmo {

void IcuDateFormatter::setDateFormat(const std::string& pattern) {
    pattern_ = pattern;
    generation_ = -1;
}

void IcuDateFormatter::prepare() const {
    if (generation_ == settings_.generation)
        return;
    generation_ = settings_.generation;
    UErrorCode status = U_ZERO_ERROR;
    format_ = std::make_unique<icu::SimpleDateFormat>(icu::UnicodeString::fromUTF8(pattern_),
                                                      settings_.locale, status);
    if (U_FAILURE(status))
        format_.reset();
    else
        format_->setTimeZone(*settings_.timeZone);
}

std::optional<std::string> IcuDateFormatter::string(Date date) const {
    prepare();
    if (!format_ || !format_->getCalendar() || !std::isfinite(date))
        return std::nullopt;
    UErrorCode status = U_ZERO_ERROR;
    icu::UnicodeString text;
    format_->format(toUDate(date), text, nullptr, status);
    if (U_FAILURE(status))
        return std::nullopt;
    std::string result;
    return text.toUTF8String(result);
}

}  // namespace velmo
