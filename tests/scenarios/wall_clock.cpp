#include "scenarios/wall_clock.h"

#include <array>
#include <cmath>

namespace velmo {
namespace {

constexpr std::array months = {"January", "February", "March",     "April",   "May",      "June",
                               "July",    "August",   "September", "October", "November", "December"};
constexpr std::array weekdays = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                 "Thursday", "Friday", "Saturday"};
constexpr std::size_t abbreviation = 3;

std::string nameOf(std::chrono::month month) {
    return months.at(static_cast<unsigned>(month) - 1);
}

}  // namespace

WallClock::WallClock(Date local) {
    const std::chrono::sys_seconds moment(std::chrono::seconds(static_cast<std::int64_t>(std::floor(local))));
    const auto day = std::chrono::floor<std::chrono::days>(moment);
    const std::chrono::hh_mm_ss time(moment - day);
    date_ = day;
    hour_ = static_cast<int>(time.hours().count());
    minute_ = static_cast<int>(time.minutes().count());
    second_ = static_cast<int>(time.seconds().count());
}

std::string WallClock::twoDigits(int number) {
    return (number < 10 ? "0" : "") + std::to_string(number);
}

std::string WallClock::weekday() const {
    return weekdays.at(std::chrono::weekday(date_).c_encoding());
}

std::string WallClock::twelveHourTime() const {
    return std::to_string((hour_ + 11) % 12 + 1) + ':' + twoDigits(minute_) + (hour_ < 12 ? " AM" : " PM");
}

std::string WallClock::shortDate() const {
    return weekday().substr(0, abbreviation) + ' ' + std::to_string(day()) + ' ' +
           nameOf(date_.month()).substr(0, abbreviation);
}

std::string WallClock::fullDate() const {
    return weekday() + ", " + std::to_string(day()) + ' ' + nameOf(date_.month()) + ' ' + year();
}

std::string WallClock::monthAndDay() const {
    return twoDigits(static_cast<int>(static_cast<unsigned>(date_.month()))) + '/' + twoDigits(day());
}

std::string WallClock::monthAndYear(int monthsLater) const {
    const auto month = date_.year() / date_.month() + std::chrono::months(monthsLater);
    return nameOf(month.month()) + ' ' + std::to_string(static_cast<int>(month.year()));
}

int WallClock::dayCount(int monthsLater) const {
    const auto month = date_.year() / date_.month() + std::chrono::months(monthsLater);
    const auto last = month / std::chrono::last;
    return static_cast<int>(static_cast<unsigned>(last.day()));
}

}  // namespace velmo
