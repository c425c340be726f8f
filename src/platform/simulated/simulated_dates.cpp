#include "simulated/simulated_dates.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <string_view>
#include <utility>

namespace velmo {

namespace {

constexpr std::array<std::string_view, 12> months = {"January",   "February", "March",    "April",
                                                     "May",       "June",     "July",     "August",
                                                     "September", "October",  "November", "December"};
constexpr std::array<std::string_view, 7> weekdays = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                      "Thursday", "Friday", "Saturday"};
constexpr std::size_t abbreviation = 3;

std::string number(int value, std::size_t digits) {
    std::string text = std::to_string(value);
    return text.size() < digits ? std::string(digits - text.size(), '0') + text : text;
}

std::string name(std::string_view full, std::size_t letters) {
    return std::string(letters > abbreviation ? full : full.substr(0, abbreviation));
}

}  // namespace

/// Knows the fields E, d, M, y, H, h, m, s, a and w, and text in single quotes.
class SimulatedDates::Formatter : public DateFormatter {
public:
    explicit Formatter(const SimulatedDates& dates) : dates_(dates), calendar_(dates.calendar_) {}

    void setDateFormat(const std::string& pattern) override { pattern_ = pattern; }

    std::optional<std::string> string(Date date) const override {
        ++dates_.stringCount_;
        if (dates_.refusesPatterns_)
            return std::nullopt;
        std::string text;
        for (std::size_t place = 0; place < pattern_.size();) {
            const char letter = pattern_[place];
            if (letter == '\'') {
                const auto end = std::min(pattern_.find('\'', place + 1), pattern_.size());
                text += pattern_.substr(place + 1, end - place - 1);
                place = end + 1;
                continue;
            }
            const auto end = std::min(pattern_.find_first_not_of(letter, place), pattern_.size());
            text += field(letter, end - place, date);
            place = end;
        }
        return text;
    }

private:
    std::string field(char letter, std::size_t length, Date date) const {
        constexpr int dayInSeconds = 86400;
        constexpr int secondsPerHour = 3600;
        const double local = date + calendar_.secondsFromUtc();
        const int second = static_cast<int>(local - std::floor(local / dayInSeconds) * dayInSeconds);
        const int hour = second / secondsPerHour;
        switch (letter) {
            case 'E':
                return name(weekdays.at(static_cast<std::size_t>(
                                calendar_.component(CalendarUnit::weekday, date) - 1)),
                            length);
            case 'd':
                return number(calendar_.component(CalendarUnit::day, date), length);
            case 'M': {
                const int month = calendar_.component(CalendarUnit::month, date);
                return length < abbreviation ? number(month, length)
                                             : name(months.at(static_cast<std::size_t>(month - 1)), length);
            }
            case 'y':
                return number(calendar_.component(CalendarUnit::year, date), length);
            case 'w':
                return number(calendar_.component(CalendarUnit::weekOfYear, date), length);
            case 'H':
                return number(hour, length);
            case 'h':
                return number((hour + 11) % 12 + 1, length);
            case 'm':
                return number(second / 60 % 60, length);
            case 's':
                return number(second % 60, length);
            case 'a':
                return hour < 12 ? "AM" : "PM";
            default:
                return std::string().append(length, letter);
        }
    }

    const SimulatedDates& dates_;
    const SimulatedCalendar& calendar_;
    std::string pattern_;
};

class SimulatedDates::Observer : public NotificationObserver {
public:
    explicit Observer(std::shared_ptr<std::function<void()>> handler) : handler_(std::move(handler)) {}

private:
    std::shared_ptr<std::function<void()>> handler_;
};

std::unique_ptr<DateFormatter> SimulatedDates::makeDateFormatter() {
    ++formatterCount_;
    return std::make_unique<Formatter>(*this);
}

std::string SimulatedDates::formatted(Date date, DateStyle style) const {
    Formatter formatter(*this);
    switch (style) {
        case DateStyle::time:
            formatter.setDateFormat("HH:mm:ss");
            break;
        case DateStyle::fullDate:
            formatter.setDateFormat("EEEE, d MMMM y");
            break;
        case DateStyle::monthAndYear:
            formatter.setDateFormat("MMMM y");
            break;
    }
    return formatter.string(date).value_or("");
}

std::unique_ptr<NotificationObserver> SimulatedDates::observeTimeZone(std::function<void()> handler) {
    auto observer = std::make_shared<std::function<void()>>(std::move(handler));
    observers_.push_back(observer);
    return std::make_unique<Observer>(std::move(observer));
}

void SimulatedDates::setSecondsFromUtc(Seconds seconds) {
    calendar_.setSecondsFromUtc(seconds);
    const auto observers = observers_;
    for (const auto& weak : observers) {
        if (const auto observer = weak.lock())
            (*observer)();
    }
}

}  // namespace velmo
