#pragma once

#include "platform/dates.h"
#include "platform/lifetime.h"
#include "platform/scoped_timer.h"
#include "platform/view.h"

namespace velmo {

/// A live clock and a month's calendar. Begins at the current month.
class CalendarPopoverView {
public:
    CalendarPopoverView(Dates& dates, RunLoop& runLoop);
    CalendarPopoverView(const CalendarPopoverView&) = delete;
    CalendarPopoverView& operator=(const CalendarPopoverView&) = delete;

    /// Called when `body` describes something else than before.
    std::function<void()> onChange;

    /// Time passes in the view only between these two, and changes of the time zone are followed.
    void appear();
    void disappear();

    View body();

    /// The cells of the month's grid: blanks first, then the start of each day. Empty where the calendar does
    /// not know the month.
    std::vector<std::optional<Date>> days() const;
    /// Seven, the week's first day first.
    std::vector<std::string> weekdaySymbols() const;

private:
    View clockRows() const;
    View navigationRow();
    View weekdayHeader() const;
    View dayGrid() const;
    View dayCell(Date day) const;
    View footer() const;

    void showNeighbour(int months);
    void showToday();
    void show(Date month);
    void tick();

    Dates& dates_;
    RunLoop& runLoop_;
    const Calendar& calendar_;
    Date now_;
    /// Any moment of the month that is shown.
    Date displayedMonth_;
    ScopedTimer ticker_;
    std::unique_ptr<NotificationObserver> timeZoneObserver_;
    Lifetime lifetime_;
};

}  // namespace velmo
