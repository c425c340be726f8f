#include "posix_time_zone.h"

#include <array>
#include <cctype>
#include <charconv>
#include <string_view>

namespace velmo {

namespace {

constexpr int secondsPerMinute = 60;
constexpr int secondsPerHour = 3600;
constexpr int mostHours = 167;
/// What holds where a text names daylight saving time without a rule.
constexpr std::string_view usualRule = ",M3.2.0,M11.1.0";

/// Takes a text apart from its beginning; a part that is not there leaves the reader where it was.
class PosixReader {
public:
    explicit PosixReader(std::string_view text) : rest_(text) {}

    bool isAtEnd() const { return rest_.empty(); }

    bool take(char character) {
        if (!rest_.starts_with(character))
            return false;
        rest_.remove_prefix(1);
        return true;
    }

    std::optional<int> number(int from, int to) {
        int value = 0;
        const auto [end, error] = std::from_chars(rest_.data(), rest_.data() + rest_.size(), value);
        if (rest_.starts_with('-') || error != std::errc() || value < from || value > to)
            return std::nullopt;
        rest_.remove_prefix(static_cast<std::size_t>(end - rest_.data()));
        return value;
    }

    /// At least three letters, or anything between angle brackets.
    std::optional<std::string> name() {
        constexpr std::size_t shortest = 3;
        std::size_t length = 0;
        if (take('<')) {
            length = rest_.find('>');
            if (length == std::string_view::npos)
                return std::nullopt;
            std::string name(rest_.substr(0, length));
            rest_.remove_prefix(length + 1);
            return name;
        }
        while (length < rest_.size() && std::isalpha(static_cast<unsigned char>(rest_[length])))
            ++length;
        if (length < shortest)
            return std::nullopt;
        std::string name(rest_.substr(0, length));
        rest_.remove_prefix(length);
        return name;
    }

    /// Hours, and minutes and seconds where they are given; in seconds.
    std::optional<int> time() {
        constexpr int most = 59;
        const int sign = take('-') ? -1 : 1;
        if (sign > 0)
            take('+');
        const auto hours = number(0, mostHours);
        const auto minutes = hours && take(':') ? number(0, most) : 0;
        const auto seconds = minutes && take(':') ? number(0, most) : 0;
        if (!hours || !minutes || !seconds)
            return std::nullopt;
        return sign * (*hours * secondsPerHour + *minutes * secondsPerMinute + *seconds);
    }

    std::optional<YearlyMoment> moment() {
        auto moment = take('M') ? dayOfWeek() : take('J') ? dayOfYear(1) : dayOfYear(0);
        if (moment && take('/')) {
            const auto timeOfDay = time();
            if (!timeOfDay)
                return std::nullopt;
            moment->time = *timeOfDay;
        }
        return moment;
    }

private:
    std::optional<YearlyMoment> dayOfWeek() {
        const auto month = number(1, 12);
        const auto week = month && take('.') ? number(1, 5) : std::nullopt;
        const auto day = week && take('.') ? number(0, 6) : std::nullopt;
        if (!day)
            return std::nullopt;
        return YearlyMoment{*month, *week, *day};
    }

    /// In a common year; the 29th of February has no number, or is not told from the first of March.
    std::optional<YearlyMoment> dayOfYear(int first) {
        constexpr std::array<int, 12> lengths = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
        const auto number = this->number(first, first + 364);
        if (!number)
            return std::nullopt;
        YearlyMoment moment{.month = 1, .week = 0, .day = *number - first + 1};
        for (std::size_t month = 0; moment.day > lengths.at(month); ++month) {
            moment.day -= lengths.at(month);
            ++moment.month;
        }
        return moment;
    }

    std::string_view rest_;
};

std::optional<LocalTimeType> readDaylight(PosixReader& reader, int standardOffset) {
    auto name = reader.name();
    if (!name)
        return std::nullopt;
    LocalTimeType daylight{standardOffset + secondsPerHour, true, *name};
    PosixReader ahead = reader;
    if (const auto offset = ahead.time()) {
        daylight.offset = -*offset;
        reader = ahead;
    }
    return daylight;
}

}  // namespace

std::optional<PosixTimeZone> parsePosixTimeZone(const std::string& text) {
    PosixReader reader(text);
    PosixTimeZone zone;
    const auto name = reader.name();
    // West of Greenwich counts as positive there.
    const auto offset = name ? reader.time() : std::nullopt;
    if (!offset)
        return std::nullopt;
    zone.standard = {-*offset, false, *name};
    if (!zone.standard.isPlausible())
        return std::nullopt;
    if (reader.isAtEnd())
        return zone;
    zone.daylight = readDaylight(reader, zone.standard.offset);
    if (!zone.daylight || !zone.daylight->isPlausible())
        return std::nullopt;
    PosixReader rule = reader.isAtEnd() ? PosixReader(usualRule) : reader;
    const auto start = rule.take(',') ? rule.moment() : std::nullopt;
    const auto end = start && rule.take(',') ? rule.moment() : std::nullopt;
    if (!end || !rule.isAtEnd())
        return std::nullopt;
    zone.daylightStart = *start;
    zone.daylightEnd = *end;
    return zone;
}

}  // namespace velmo
