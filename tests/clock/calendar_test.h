#pragma once

#include "clock/calendar_popover_view.h"
#include "clock/date_of.h"
#include "platform/simulated/simulated_dates.h"
#include "platform/simulated/simulated_run_loop.h"
#include "views/view_search.h"

#include <gtest/gtest.h>

namespace velmo {

/// The calendar on a day of a test's choice, in UTC.
class CalendarTest : public testing::Test {
protected:
    static constexpr int sunday = 1;
    static constexpr int monday = 2;
    static constexpr int saturday = 7;

    void open(Date now, int firstWeekday = sunday) {
        runLoop_.setNow(now);
        dates_.calendar().setFirstWeekday(firstWeekday);
        view_ = std::make_unique<CalendarPopoverView>(dates_, runLoop_);
    }

    View body() { return view_->body(); }
    void previous() { press(body(), "Previous month"); }
    void next() { press(body(), "Next month"); }
    void today() { press(body(), "Today"); }
    std::string month() {
        const View view = body();
        return textsOf(view.children.at(navigationRow)).at(0);
    }
    bool isTodayEnabled() {
        const View view = body();
        return !isDisabled(*find<Button>(view, "Today"));
    }
    /// Blanks before the first day.
    std::size_t leading() const {
        std::size_t count = 0;
        for (const auto& day : view_->days())
            count += day ? 0 : 1;
        return count;
    }
    std::size_t dayCount() const { return view_->days().size() - leading(); }
    /// The numbers of the days that are marked as today.
    std::vector<std::string> marked() {
        const View view = body();
        std::vector<std::string> numbers;
        for (const View& cell : view.children.at(dayGrid).children) {
            const auto background = modifierOf<Background>(cell);
            if (background && background->color.role == ColorRole::accent)
                numbers.push_back(textsOf(cell).at(0));
        }
        return numbers;
    }
    std::vector<std::string> footer() {
        const View view = body();
        return textsOf(view.children.at(footerRow));
    }

    // Places among the rows of the view.
    static constexpr std::size_t clockRows = 0;
    static constexpr std::size_t navigationRow = 2;
    static constexpr std::size_t weekdayHeader = 3;
    static constexpr std::size_t dayGrid = 4;
    static constexpr std::size_t footerRow = 5;

    SimulatedDates dates_;
    SimulatedRunLoop runLoop_;
    std::unique_ptr<CalendarPopoverView> view_;
};

}  // namespace velmo
