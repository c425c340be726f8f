#include "icu_date_formatter.h"

#include <unicode/calendar.h>

#include <cmath>
#include <cstdint>

namespace velmo {

namespace {

/// Also where such a letter is only quoted.
bool showsSeconds(const std::string& pattern) {
    return pattern.find_first_of("sSA") != std::string::npos;
}

}  // namespace

void IcuDateFormatter::setDateFormat(const std::string& pattern) {
    pattern_ = pattern;
    generation_ = -1;
}

void IcuDateFormatter::prepare() const {
    if (generation_ == settings_.generation)
        return;
    generation_ = settings_.generation;
    last_.reset();
    const auto pattern = icu::UnicodeString::fromUTF8(pattern_);
    if (format_) {
        // Names and digits stay, which take long to find.
        format_->applyPattern(pattern);
    } else {
        UErrorCode status = U_ZERO_ERROR;
        format_ = std::make_unique<icu::SimpleDateFormat>(pattern, settings_.locale, status);
        if (U_FAILURE(status)) {
            format_.reset();
            return;
        }
    }
    format_->setTimeZone(*settings_.timeZone);
}

std::optional<std::string> IcuDateFormatter::string(Date date) const {
    constexpr double secondsPerMinute = 60;
    prepare();
    const double minute = std::floor(date / secondsPerMinute);
    if (last_ && last_->minute == minute)
        return last_->text;
    auto text = written(date);
    if (text && !showsSeconds(pattern_) && hasWholeMinutes(date))
        last_ = {minute, text};
    return text;
}

bool IcuDateFormatter::hasWholeMinutes(Date date) const {
    constexpr int millisecondsPerMinute = 60'000;
    UErrorCode status = U_ZERO_ERROR;
    std::int32_t offset = 0;
    std::int32_t daylight = 0;
    settings_.timeZone->getOffset(toUDate(date), false, offset, daylight, status);
    return U_SUCCESS(status) && (offset + daylight) % millisecondsPerMinute == 0;
}

std::optional<std::string> IcuDateFormatter::written(Date date) const {
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
