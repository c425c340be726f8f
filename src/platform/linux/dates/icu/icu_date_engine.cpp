#include "icu_date_engine.h"

#include "linux/dates/icu/posix_locale.h"
#include "linux/dates/icu/system_time_zone.h"

#include <unicode/dtptngen.h>

namespace velmo {

namespace {

/// The parts of a date that a style shows, in the order of no locale.
const char* skeletonOf(DateStyle style) {
    switch (style) {
        case DateStyle::time:
            return "jms";
        case DateStyle::fullDate:
            return "yMMMMEEEEd";
        case DateStyle::monthAndYear:
            return "yMMMM";
    }
    return "";
}

std::string patternOf(DateStyle style, const icu::Locale& locale) {
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::DateTimePatternGenerator> generator(
        icu::DateTimePatternGenerator::createInstance(locale, status));
    std::string pattern;
    if (U_SUCCESS(status))
        generator->getBestPattern(icu::UnicodeString(skeletonOf(style)), status).toUTF8String(pattern);
    return pattern;
}

}  // namespace

IcuDateEngine::IcuDateEngine(const std::string& locale, const TimeZoneSetting& timeZone)
    : settings_{.locale = localeFromPosixName(locale)} {
    UErrorCode status = U_ZERO_ERROR;
    // What ICU takes where a language has no data.
    icu::Locale::setDefault(settings_.locale, status);
    setTimeZone(timeZone);
}

void IcuDateEngine::setTimeZone(const TimeZoneSetting& setting) {
    settings_.timeZone = makeTimeZone(setting);
    icu::TimeZone::setDefault(*settings_.timeZone);
    ++settings_.generation;
}

std::unique_ptr<DateFormatter> IcuDateEngine::makeDateFormatter() {
    return std::make_unique<IcuDateFormatter>(settings_);
}

std::string IcuDateEngine::formatted(Date date, DateStyle style) {
    const auto [place, isNew] = styles_.try_emplace(style, settings_);
    if (isNew)
        place->second.setDateFormat(patternOf(style, settings_.locale));
    return place->second.string(date).value_or("");
}

}  // namespace velmo
