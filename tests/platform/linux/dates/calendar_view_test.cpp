#include "calendar_places.h"
#include "clock/calendar_popover_view.h"
#include "linux/dates/linux_dates.h"
#include "platform/simulated/simulated_run_loop.h"
#include "views/view_search.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <ctime>

namespace velmo {

namespace {

/// What a cell of the month's grid shows.
struct CalendarCell {
    std::string text;
    bool isMarked = false;
    ColorRole color = ColorRole::clear;

    bool operator==(const CalendarCell&) const = default;
};

void PrintTo(const CalendarCell& cell, std::ostream* stream) {
    *stream << cell.text << (cell.isMarked ? "*" : "") << '/' << static_cast<int>(cell.color);
}

/// The calendar as the program describes it, in a locale and time zone of a test's choice.
class CalendarIn {
public:
    CalendarIn(const char* locale, const char* zone) {
        setenv("LC_ALL", locale, 1);
        setenv("TZ", zone, 1);
        tzset();
        dates_ = std::make_unique<LinuxDates>(eventLoop_);
    }
    ~CalendarIn() {
        unsetenv("LC_ALL");
        unsetenv("TZ");
        tzset();
    }
    CalendarIn(const CalendarIn&) = delete;
    CalendarIn& operator=(const CalendarIn&) = delete;

    std::unique_ptr<CalendarPopoverView> open(Date now) {
        runLoop_.setNow(now);
        return std::make_unique<CalendarPopoverView>(*dates_, runLoop_);
    }

    static std::string time(const View& body) { return textsOf(body.children.at(0)).at(0); }
    static std::vector<std::string> header(const View& body) { return textsOf(body.children.at(3)); }
    static std::vector<std::string> footer(const View& body) { return textsOf(body.children.at(5)); }
    static std::vector<CalendarCell> cells(const View& body) {
        std::vector<CalendarCell> cells;
        for (const View& view : body.children.at(4).children) {
            const auto texts = textsOf(view);
            const auto background = modifierOf<Background>(view);
            const auto foreground = modifierOf<Foreground>(view);
            cells.push_back({texts.empty() ? "" : texts.front(),
                             background && background->color.role == ColorRole::accent,
                             foreground ? foreground->color.role : ColorRole::clear});
        }
        return cells;
    }
    static bool offersToday(const View& body) { return !isDisabled(*find<Button>(body, "Today")); }

private:
    EventLoop eventLoop_;
    SimulatedRunLoop runLoop_;
    std::unique_ptr<LinuxDates> dates_;
};

class CalendarMonths : public testing::TestWithParam<CalendarPlace> {
protected:
    std::vector<std::string> symbolsFromFirstWeekday() const {
        auto symbols = GetParam().symbols;
        std::rotate(symbols.begin(), symbols.begin() + (GetParam().firstWeekday - 1), symbols.end());
        return symbols;
    }
    std::vector<CalendarCell> countedCells(const CountedMonth& month, const CountedDay& today) const {
        const auto& weekend = GetParam().weekend;
        std::vector<CalendarCell> cells(static_cast<std::size_t>(month.leading));
        for (const CountedDay& day : month.days) {
            const bool isToday = day.number == today.number;
            const bool isFree = std::find(weekend.begin(), weekend.end(), day.weekday) != weekend.end();
            cells.push_back({std::to_string(day.number), isToday,
                             isToday  ? ColorRole::white
                             : isFree ? ColorRole::secondary
                                      : ColorRole::primary});
        }
        return cells;
    }
    static std::vector<std::optional<Date>> countedDays(const CountedMonth& month) {
        std::vector<std::optional<Date>> days(static_cast<std::size_t>(month.leading));
        for (const CountedDay& day : month.days)
            days.emplace_back(day.start);
        return days;
    }
    static std::vector<std::string> countedFooter(const CountedMonth& month, const CountedDay& today) {
        return {"Week " + std::to_string(today.week),
                "Day " + std::to_string(today.dayOfYear) + " of " + std::to_string(month.daysOfYear)};
    }
    static Date endOf(const CountedMonth& month, std::size_t day) {
        return day + 1 < month.days.size() ? month.days[day + 1].start : month.end;
    }

    /// With a day of the month as today.
    void checkOpened(std::size_t index) {
        const auto& month = months_[index];
        const std::size_t day = index % month.days.size();
        const auto& today = month.days[day];
        // At the first or in the last second of a day.
        const auto view = calendar_.open(index % 2 == 0 ? today.start : endOf(month, day) - 1);
        const View body = view->body();
        ASSERT_EQ(view->days(), countedDays(month));
        ASSERT_EQ(CalendarIn::cells(body), countedCells(month, today));
        ASSERT_EQ(CalendarIn::header(body), symbolsFromFirstWeekday());
        ASSERT_EQ(CalendarIn::footer(body), countedFooter(month, today));
        ASSERT_FALSE(CalendarIn::offersToday(body));
    }
    /// So that the months have what makes counting hard.
    void expectUnusualDays() const {
        constexpr double usualLength = 86400;
        double shortest = usualLength;
        double longest = usualLength;
        int withoutMidnight = 0;
        for (const auto& month : months_) {
            for (std::size_t day = 0; day < month.days.size(); ++day) {
                const double length = endOf(month, day) - month.days[day].start;
                shortest = std::min(shortest, length);
                longest = std::max(longest, length);
                const auto start = static_cast<std::time_t>(month.days[day].start);
                std::tm local{};
                localtime_r(&start, &local);
                withoutMidnight += local.tm_hour > 0 ? 1 : 0;
            }
        }
        EXPECT_EQ(shortest < usualLength && longest > usualLength, GetParam().changesClocks);
        EXPECT_EQ(withoutMidnight > 0, GetParam().lacksMidnights);
    }

    CalendarIn calendar_{GetParam().locale, GetParam().zone};
    std::vector<CountedMonth> months_ = countMonths(GetParam());
};

TEST_P(CalendarMonths, AreShownAndTurnedAsCountedByArithmetic) {
    expectUnusualDays();
    // The last day of a month, which others may not have.
    const auto& first = months_.front();
    const auto turned = calendar_.open(first.end - 1);
    for (std::size_t index = 0; index < months_.size(); ++index) {
        ASSERT_NO_FATAL_FAILURE(checkOpened(index)) << "month " << index;
        const View body = turned->body();
        ASSERT_EQ(turned->days(), countedDays(months_[index])) << "month " << index;
        ASSERT_EQ(CalendarIn::footer(body), countedFooter(first, first.days.back()));
        ASSERT_EQ(CalendarIn::offersToday(body), index > 0);
        press(body, "Next month");
    }
    const View last = turned->body();
    for (std::size_t index = months_.size(); index > 0; --index) {
        press(last, "Previous month");
        ASSERT_EQ(turned->days(), countedDays(months_[index - 1])) << "month " << index - 1;
    }
}

INSTANTIATE_TEST_SUITE_P(In, CalendarMonths, testing::ValuesIn(calendarPlaces()),
                         [](const auto& test) { return test.param.name; });

// The texts around them are English, too.
TEST(CalendarNumbers, ArePlainIntegersWhereverTheTimeHasOtherDigits) {
    constexpr Date evening = 1795300200;  // 2026-11-21 22:30 UTC
    const auto isPlain = [](const std::string& text) {
        return std::all_of(text.begin(), text.end(),
                           [](char letter) { return letter >= ' ' && letter <= '~'; });
    };
    for (const char* locale : {"ar_EG.UTF-8", "fa_IR.UTF-8"}) {
        CalendarIn calendar(locale, "UTC");
        const View body = calendar.open(evening)->body();
        EXPECT_FALSE(isPlain(CalendarIn::time(body))) << CalendarIn::time(body);
        for (const auto& cell : CalendarIn::cells(body))
            EXPECT_TRUE(isPlain(cell.text)) << cell.text;
        for (const auto& text : CalendarIn::footer(body))
            EXPECT_TRUE(isPlain(text)) << text;
    }
    CalendarIn egypt("ar_EG.UTF-8", "UTC");
    EXPECT_EQ(CalendarIn::footer(egypt.open(evening)->body()),
              (std::vector<std::string>{"Week 48", "Day 325 of 365"}));
}

}  // namespace

}  // namespace velmo
