#include "system_time_zone.h"

#include "linux/dates/icu/posix_time_zone.h"
#include "linux/dates/icu/tzif.h"

#include <unicode/basictz.h>
#include <unicode/rbtz.h>
#include <unicode/tzrule.h>
#include <unicode/tztrans.h>
#include <unicode/ucal.h>

#include <cmath>
#include <map>
#include <utility>
#include <vector>

namespace velmo {

namespace {

constexpr int millisecondsPerSecond = 1000;
constexpr int millisecondsPerDay = 86'400'000;
constexpr int usualSavings = 3600;
constexpr int mostSavings = 2 * 3600;
/// Before that, and after what calendars are asked for, zones may differ in what nobody remembers.
constexpr UDate comparedFrom = 0;
constexpr UDate comparedUntil = 2145916800000.0;
/// From then on the rules hold that stand alone.
constexpr int earliestYear = 1900;

/// How an offset is made up; both in milliseconds.
struct Split {
    int standard;
    int savings;

    bool operator<(const Split& other) const {
        return std::pair(standard, savings) < std::pair(other.standard, other.savings);
    }
};

Split split(const LocalTimeType& type, int standardOffset) {
    if (!type.isDaylight)
        return {type.offset * millisecondsPerSecond, 0};
    const int savings = type.offset - standardOffset;
    const int likely = savings > 0 && savings <= mostSavings ? savings : usualSavings;
    return {(type.offset - likely) * millisecondsPerSecond, likely * millisecondsPerSecond};
}

icu::DateTimeRule yearlyRule(const YearlyMoment& moment) {
    constexpr int lastWeek = 5;
    const int month = moment.month - 1;
    const int time = moment.time * millisecondsPerSecond;
    if (moment.week == 0)
        return {month, moment.day, time, icu::DateTimeRule::WALL_TIME};
    return {month, moment.week == lastWeek ? -1 : moment.week, moment.day + UCAL_SUNDAY, time,
            icu::DateTimeRule::WALL_TIME};
}

icu::UnicodeString text(const std::string& utf8) {
    return icu::UnicodeString::fromUTF8(utf8);
}

void addYearlyRules(icu::RuleBasedTimeZone& zone, const PosixTimeZone& rules, int startYear,
                    UErrorCode& status) {
    if (!rules.daylight)
        return;
    const auto add = [&](const LocalTimeType& type, const YearlyMoment& start) {
        const auto [standard, savings] = split(type, rules.standard.offset);
        zone.addTransitionRule(
            new icu::AnnualTimeZoneRule(text(type.abbreviation), standard, savings, yearlyRule(start),
                                        startYear, icu::AnnualTimeZoneRule::MAX_YEAR),
            status);
    };
    add(rules.standard, rules.daylightEnd);
    add(*rules.daylight, rules.daylightStart);
}

/// Null where the parts do not make up a zone.
std::unique_ptr<icu::BasicTimeZone> completed(std::unique_ptr<icu::RuleBasedTimeZone> zone,
                                              UErrorCode& status) {
    zone->complete(status);
    if (U_FAILURE(status))
        return nullptr;
    return zone;
}

std::unique_ptr<icu::RuleBasedTimeZone> beginZone(const std::string& name, const LocalTimeType& first) {
    const auto [standard, savings] = split(first, first.offset - usualSavings);
    return std::make_unique<icu::RuleBasedTimeZone>(
        text(name), new icu::InitialTimeZoneRule(text(first.abbreviation), standard, savings));
}

std::unique_ptr<icu::BasicTimeZone> fromRules(const std::string& name, const PosixTimeZone& rules) {
    UErrorCode status = U_ZERO_ERROR;
    auto zone = beginZone(name, rules.standard);
    addYearlyRules(*zone, rules, earliestYear, status);
    return completed(std::move(zone), status);
}

int yearOf(std::int64_t time) {
    constexpr double secondsPerYear = 365.2425 * 86400;
    constexpr int epoch = 1970;
    return epoch + static_cast<int>(std::floor(static_cast<double>(time) / secondsPerYear));
}

/// The year after the last change. Some files end with an entry that changes nothing.
int firstYearOfRules(const TzifZone& file) {
    const auto& transitions = file.transitions;
    for (auto last = transitions.size(); last > 0; --last) {
        const std::size_t before = last > 1 ? transitions[last - 2].type : 0;
        if (transitions[last - 1].type != before)
            return yearOf(transitions[last - 1].time) + 1;
    }
    return earliestYear;
}

std::unique_ptr<icu::BasicTimeZone> fromFile(const std::string& name, const TzifZone& file) {
    UErrorCode status = U_ZERO_ERROR;
    auto zone = beginZone(name, file.types.front());
    std::map<std::pair<std::size_t, Split>, std::vector<UDate>> starts;
    int standardOffset = file.types.front().offset;
    for (const auto& [time, typeIndex] : file.transitions) {
        const auto& type = file.types.at(typeIndex);
        if (!type.isDaylight)
            standardOffset = type.offset;
        starts[{typeIndex, split(type, standardOffset)}].push_back(static_cast<double>(time) *
                                                                   millisecondsPerSecond);
    }
    for (const auto& [key, times] : starts) {
        const auto& [typeIndex, parts] = key;
        zone->addTransitionRule(
            new icu::TimeArrayTimeZoneRule(text(file.types.at(typeIndex).abbreviation), parts.standard,
                                           parts.savings, times.data(), static_cast<int32_t>(times.size()),
                                           icu::DateTimeRule::UTC_TIME),
            status);
    }
    if (const auto rules = parsePosixTimeZone(file.rules)) {
        addYearlyRules(*zone, *rules, firstYearOfRules(file), status);
    }
    return completed(std::move(zone), status);
}

int offsetAt(const icu::TimeZone& zone, UDate time) {
    UErrorCode status = U_ZERO_ERROR;
    int32_t standard = 0;
    int32_t savings = 0;
    zone.getOffset(time, false, standard, savings, status);
    return standard + savings;
}

/// True where clocks of both zones show the same around each change of the first one's.
bool agreesAtChangesOf(const icu::BasicTimeZone& zone, const icu::TimeZone& other) {
    icu::TimeZoneTransition change;
    UDate time = comparedFrom;
    if (offsetAt(zone, time) != offsetAt(other, time))
        return false;
    while (zone.getNextTransition(time, false, change) && change.getTime() < comparedUntil) {
        time = change.getTime();
        if (offsetAt(zone, time) != offsetAt(other, time) ||
            offsetAt(zone, time - 1) != offsetAt(other, time - 1))
            return false;
    }
    return true;
}

/// Null where ICU knows no zone of that name, or takes it for an offset of a day or more, as GMT-25E61.
std::unique_ptr<icu::TimeZone> knownZone(const std::string& name) {
    std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::createTimeZone(text(name)));
    if (name.empty() || !zone || *zone == icu::TimeZone::getUnknown() ||
        std::abs(static_cast<double>(zone->getRawOffset())) >= millisecondsPerDay)
        return nullptr;
    return zone;
}

/// ICU's zone where it is right, because it knows more about what zones are called.
std::unique_ptr<icu::TimeZone> better(std::unique_ptr<icu::TimeZone> known,
                                      std::unique_ptr<icu::BasicTimeZone> own) {
    const auto* basic = dynamic_cast<const icu::BasicTimeZone*>(known.get());
    if (basic && agreesAtChangesOf(*basic, *own) && agreesAtChangesOf(*own, *basic))
        return known;
    return own;
}

}  // namespace

std::unique_ptr<icu::TimeZone> makeTimeZone(const TimeZoneSetting& setting) {
    if (const auto file = parseTzif(setting.file)) {
        if (auto zone = fromFile(setting.name, *file))
            return better(knownZone(setting.name), std::move(zone));
    }
    if (const auto rules = parsePosixTimeZone(setting.rules)) {
        if (auto zone = fromRules(rules->standard.abbreviation, *rules))
            return zone;
    }
    if (auto zone = knownZone(setting.name))
        return zone;
    return std::unique_ptr<icu::TimeZone>(icu::TimeZone::createTimeZone("Etc/UTC"));
}

}  // namespace velmo
