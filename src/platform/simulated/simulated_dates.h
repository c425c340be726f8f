#pragma once

#include "dates.h"
#include "simulated/simulated_calendar.h"

namespace velmo {

/// Dates in English at a chosen distance from UTC.
class SimulatedDates : public Dates {
public:
    const Calendar& currentCalendar() const override { return calendar_; }
    std::unique_ptr<DateFormatter> makeDateFormatter() override;
    std::string formatted(Date date, DateStyle style) const override;
    std::unique_ptr<NotificationObserver> observeTimeZone(std::function<void()> handler) override;

    SimulatedCalendar& calendar() { return calendar_; }
    /// Changes the zone and tells the observers.
    void setSecondsFromUtc(Seconds seconds);
    /// No formatter can use its pattern from now on.
    void setRefusesPatterns(bool refuses) { refusesPatterns_ = refuses; }
    /// How many formatters were made.
    int formatterCount() const { return formatterCount_; }
    /// How many dates they were asked for.
    int stringCount() const { return stringCount_; }

private:
    class Formatter;
    class Observer;

    SimulatedCalendar calendar_;
    std::vector<std::weak_ptr<std::function<void()>>> observers_;
    int formatterCount_ = 0;
    mutable int stringCount_ = 0;
    bool refusesPatterns_ = false;
};

}  // namespace velmo
