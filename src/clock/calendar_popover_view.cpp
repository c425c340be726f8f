#include "clock/calendar_popover_view.h"

#include <algorithm>

namespace velmo {

namespace {

constexpr int daysPerWeek = 7;

}  // namespace

CalendarPopoverView::CalendarPopoverView(Dates& dates, RunLoop& runLoop)
    : dates_(dates),
      runLoop_(runLoop),
      calendar_(dates.currentCalendar()),
      now_(runLoop.now()),
      displayedMonth_(now_) {}

void CalendarPopoverView::appear() {
    constexpr Seconds interval = 1.0;
    const auto tickWhileAlive = lifetime_.guard([this] { tick(); });
    ticker_ = runLoop_.scheduleRepeating(interval, 0, tickWhileAlive);
    timeZoneObserver_ = dates_.observeTimeZone(tickWhileAlive);
}

void CalendarPopoverView::disappear() {
    ticker_.end();
    timeZoneObserver_.reset();
}

std::vector<std::optional<Date>> CalendarPopoverView::days() const {
    const auto month = calendar_.dateInterval(CalendarUnit::month, displayedMonth_);
    const auto count = calendar_.dayCount(CalendarUnit::month, displayedMonth_);
    if (!month || !count)
        return {};
    const int weekday = calendar_.component(CalendarUnit::weekday, month->start);
    const int leading = (weekday - calendar_.firstWeekday() + daysPerWeek) % daysPerWeek;
    std::vector<std::optional<Date>> days(static_cast<std::size_t>(leading));
    for (int i = 0; i < *count; ++i)
        days.push_back(calendar_.dateByAdding(CalendarUnit::day, i, month->start));
    return days;
}

std::vector<std::string> CalendarPopoverView::weekdaySymbols() const {
    auto symbols = calendar_.veryShortStandaloneWeekdaySymbols();
    std::rotate(symbols.begin(), symbols.begin() + (calendar_.firstWeekday() - 1), symbols.end());
    return symbols;
}

void CalendarPopoverView::showNeighbour(int months) {
    if (const auto month = calendar_.dateByAdding(CalendarUnit::month, months, displayedMonth_))
        show(*month);
}

void CalendarPopoverView::showToday() {
    show(now_);
}

void CalendarPopoverView::show(Date month) {
    displayedMonth_ = month;
    if (onChange)
        onChange();
}

void CalendarPopoverView::tick() {
    now_ = runLoop_.now();
    if (onChange)
        onChange();
}

}  // namespace velmo
