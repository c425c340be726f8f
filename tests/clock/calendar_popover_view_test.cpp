#include "clock/calendar_test.h"
#include "views/view_outline.h"

namespace velmo {
namespace {

using CalendarPopover = CalendarTest;

TEST_F(CalendarPopover, BeginsAtTheCurrentMonth) {
    open(dateOf(2025, 7, 5));
    EXPECT_EQ(month(), "July 2025");
    EXPECT_EQ(marked(), std::vector<std::string>{"5"});
}

TEST_F(CalendarPopover, LooksAsOutlined) {
    open(dateOf(2025, 7, 5, 13, 4, 9));
    expectOutline(body(), "calendar");
    next();
    expectOutline(body(), "calendar_next_month");
}

TEST_F(CalendarPopover, HasTheStartOfEachDayInItsGrid) {
    dates_.calendar().setSecondsFromUtc(7200);
    open(dateOf(2025, 7, 5));
    const auto days = view_->days();
    ASSERT_EQ(days.size(), 2U + 31U);
    for (unsigned day = 1; day <= 31; ++day)
        EXPECT_EQ(days.at(day + 1), dateOf(2025, 7, day, 0) - 7200) << day;
}

TEST_F(CalendarPopover, HasNoBlanksWhereTheMonthStartsOnTheFirstWeekday) {
    open(dateOf(2025, 6, 10), sunday);
    EXPECT_EQ(leading(), 0U);
    open(dateOf(2025, 9, 10), monday);
    EXPECT_EQ(leading(), 0U);
}

TEST_F(CalendarPopover, HasSixBlanksWhereTheMonthStartsTheDayBeforeTheFirstWeekday) {
    open(dateOf(2025, 2, 10), sunday);
    EXPECT_EQ(leading(), 6U);
    open(dateOf(2025, 6, 10), monday);
    EXPECT_EQ(leading(), 6U);
}

TEST_F(CalendarPopover, CountsHeaderAndBlanksFromMondayWhereTheWeekBeginsThen) {
    open(dateOf(2025, 7, 5), monday);
    EXPECT_EQ(view_->weekdaySymbols(), (std::vector<std::string>{"M", "T", "W", "T", "F", "S", "S"}));
    // The first of July 2025 is a Tuesday.
    EXPECT_EQ(leading(), 1U);
    open(dateOf(2025, 7, 5), sunday);
    EXPECT_EQ(view_->weekdaySymbols(), (std::vector<std::string>{"S", "M", "T", "W", "T", "F", "S"}));
    EXPECT_EQ(leading(), 2U);
    open(dateOf(2025, 7, 5), saturday);
    EXPECT_EQ(view_->weekdaySymbols(), (std::vector<std::string>{"S", "S", "M", "T", "W", "T", "F"}));
    EXPECT_EQ(leading(), 3U);
}

TEST_F(CalendarPopover, HasTwentyNineDaysInTheFebruaryOfALeapYear) {
    open(dateOf(2024, 2, 10));
    EXPECT_EQ(dayCount(), 29U);
    open(dateOf(2025, 2, 10));
    EXPECT_EQ(dayCount(), 28U);
    open(dateOf(1900, 2, 10));
    EXPECT_EQ(dayCount(), 28U);
}

TEST_F(CalendarPopover, NeedsSixRowsForALongMonthThatStartsOnTheLastWeekday) {
    open(dateOf(2025, 3, 10), sunday);
    EXPECT_EQ(leading(), 6U);
    // Five full rows and two days of a sixth one, without blanks after them.
    EXPECT_EQ(view_->days().size(), 5U * 7U + 2U);
}

TEST_F(CalendarPopover, IsEmptyWhereTheCalendarDoesNotKnowTheMonth) {
    open(dateOf(2025, 7, 5));
    dates_.calendar().setKnowsNothing(true);
    EXPECT_TRUE(view_->days().empty());
    EXPECT_TRUE(body().children.at(dayGrid).children.empty());
}

TEST_F(CalendarPopover, IsEmptyWhereTheCalendarDoesNotKnowHowManyDaysTheMonthHas) {
    open(dateOf(2025, 7, 5));
    dates_.calendar().setCountsNoDays(true);
    EXPECT_TRUE(view_->days().empty());
}

TEST_F(CalendarPopover, TurnsThePages) {
    open(dateOf(2025, 1, 31));
    next();
    EXPECT_EQ(month(), "February 2025");
    EXPECT_TRUE(marked().empty());
    previous();
    previous();
    EXPECT_EQ(month(), "December 2024");
    EXPECT_EQ(dayCount(), 31U);
}

TEST_F(CalendarPopover, StaysOnThePageWhereTheCalendarCannotTurnIt) {
    open(dateOf(2025, 7, 5));
    dates_.calendar().setKnowsNothing(true);
    next();
    EXPECT_EQ(month(), "July 2025");
    previous();
    EXPECT_EQ(month(), "July 2025");
}

TEST_F(CalendarPopover, OffersTodayOnEveryMonthButTheCurrentOne) {
    open(dateOf(2025, 7, 5));
    EXPECT_FALSE(isTodayEnabled());
    next();
    EXPECT_TRUE(isTodayEnabled());
    previous();
    EXPECT_FALSE(isTodayEnabled());
    previous();
    EXPECT_TRUE(isTodayEnabled());
}

TEST_F(CalendarPopover, OffersTodayOnTheSameMonthOfAnotherYear) {
    open(dateOf(2025, 7, 5));
    for (int i = 0; i < 12; ++i)
        next();
    EXPECT_EQ(month(), "July 2026");
    EXPECT_TRUE(isTodayEnabled());
    EXPECT_TRUE(marked().empty());
}

TEST_F(CalendarPopover, ReturnsToToday) {
    open(dateOf(2025, 7, 5));
    next();
    next();
    today();
    EXPECT_EQ(month(), "July 2025");
    EXPECT_EQ(marked(), std::vector<std::string>{"5"});
}

TEST_F(CalendarPopover, NeverDisablesTheArrows) {
    open(dateOf(2025, 7, 5));
    dates_.calendar().setKnowsNothing(true);
    const View view = body();
    EXPECT_FALSE(isDisabled(*find<Button>(view, "Previous month")));
    EXPECT_FALSE(isDisabled(*find<Button>(view, "Next month")));
}

TEST_F(CalendarPopover, IsTurnedByKeys) {
    open(dateOf(2025, 7, 5));
    pressShortcut(body(), ShortcutKey::pageDown);
    EXPECT_EQ(month(), "August 2025");
    pressShortcut(body(), ShortcutKey::pageUp);
    pressShortcut(body(), ShortcutKey::pageUp);
    EXPECT_EQ(month(), "June 2025");
    pressShortcut(body(), ShortcutKey::home);
    EXPECT_EQ(month(), "July 2025");
}

TEST_F(CalendarPopover, CountsTheDaysOfALeapYear) {
    open(dateOf(2024, 12, 31));
    EXPECT_EQ(footer().at(1), "Day 366 of 366");
    open(dateOf(2025, 12, 31));
    EXPECT_EQ(footer().at(1), "Day 365 of 365");
    open(dateOf(2025, 1, 1));
    EXPECT_EQ(footer().at(1), "Day 1 of 365");
}

TEST_F(CalendarPopover, NumbersTheWeekAsTheCalendarDoes) {
    open(dateOf(2024, 12, 31), monday);
    EXPECT_EQ(footer().at(0), "Week 1");
    open(dateOf(2024, 12, 28), monday);
    EXPECT_EQ(footer().at(0), "Week 52");
}

TEST_F(CalendarPopover, TellsOfTodayInTheFooterWhateverPageIsShown) {
    open(dateOf(2025, 7, 5), monday);
    next();
    EXPECT_EQ(footer(), (std::vector<std::string>{"Week 27", "Day 186 of 365"}));
}

TEST_F(CalendarPopover, CountsNoDaysWhereTheCalendarCannotTell) {
    open(dateOf(2024, 12, 31));
    dates_.calendar().setKnowsNothing(true);
    EXPECT_EQ(footer().at(1), "Day 0 of 365");
}

TEST_F(CalendarPopover, FollowsTheCalendar) {
    open(dateOf(2025, 7, 5, 23), sunday);
    dates_.calendar().setFirstWeekday(monday);
    EXPECT_EQ(leading(), 1U);
    dates_.setSecondsFromUtc(7200);
    EXPECT_EQ(marked(), std::vector<std::string>{"6"});
}

TEST_F(CalendarPopover, LetsTimePassOnlyWhileItIsShown) {
    open(dateOf(2025, 7, 5, 9, 59, 58));
    int changes = 0;
    view_->onChange = [&changes] { ++changes; };
    runLoop_.advance(5);
    EXPECT_EQ(runLoop_.timerCount(), 0U);
    EXPECT_EQ(textsOf(body()).at(0), "09:59:58");
    view_->appear();
    runLoop_.advance(0.999);
    EXPECT_EQ(changes, 0);
    runLoop_.advance(0.001);
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(textsOf(body()).at(0), "10:00:04");
    runLoop_.advance(2);
    EXPECT_EQ(changes, 3);
    EXPECT_EQ(textsOf(body()).at(0), "10:00:06");
    view_->disappear();
    EXPECT_EQ(runLoop_.timerCount(), 0U);
}

TEST_F(CalendarPopover, IsNeverLate) {
    open(dateOf(2025, 7, 5));
    view_->appear();
    EXPECT_EQ(runLoop_.tolerances(), std::vector<Seconds>{0});
}

TEST_F(CalendarPopover, FollowsTheTimeZoneAtOnceWhileItIsShown) {
    open(dateOf(2025, 7, 31, 23, 30));
    int changes = 0;
    view_->onChange = [&changes] { ++changes; };
    const auto time = [this] { return textsOf(body().children.at(clockRows)).at(0); };
    dates_.setSecondsFromUtc(60);
    EXPECT_EQ(changes, 0);
    view_->appear();
    runLoop_.advance(0.5);
    EXPECT_EQ(changes, 0);
    dates_.setSecondsFromUtc(3600);
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(time(), "00:30:00");
    EXPECT_EQ(footer().at(1), "Day 213 of 365");
    view_->disappear();
    dates_.setSecondsFromUtc(0);
    EXPECT_EQ(changes, 1);
}

TEST_F(CalendarPopover, TellsOfEachPress) {
    open(dateOf(2025, 7, 5));
    int changes = 0;
    view_->onChange = [&changes] { ++changes; };
    next();
    today();
    previous();
    EXPECT_EQ(changes, 3);
}

TEST_F(CalendarPopover, MovesTheMarkerAtMidnight) {
    open(dateOf(2025, 7, 5, 23, 59, 58));
    view_->appear();
    runLoop_.advance(1);
    EXPECT_EQ(marked(), std::vector<std::string>{"5"});
    EXPECT_EQ(footer().at(1), "Day 186 of 365");
    runLoop_.advance(1);
    EXPECT_EQ(marked(), std::vector<std::string>{"6"});
    EXPECT_EQ(footer().at(1), "Day 187 of 365");
    EXPECT_EQ(textsOf(body()).at(1), "Sunday, 6 July 2025");
}

TEST_F(CalendarPopover, StaysOnThePageAtTheEndOfTheMonth) {
    open(dateOf(2025, 7, 31, 23, 59, 59));
    view_->appear();
    EXPECT_FALSE(isTodayEnabled());
    runLoop_.advance(1);
    EXPECT_EQ(month(), "July 2025");
    EXPECT_TRUE(marked().empty());
    EXPECT_TRUE(isTodayEnabled());
    today();
    EXPECT_EQ(month(), "August 2025");
    EXPECT_EQ(marked(), std::vector<std::string>{"1"});
}

TEST_F(CalendarPopover, StaysOnThePageAtTheEndOfTheYear) {
    open(dateOf(2024, 12, 31, 23, 59, 59));
    view_->appear();
    previous();
    runLoop_.advance(1);
    EXPECT_EQ(month(), "November 2024");
    EXPECT_EQ(footer().at(1), "Day 1 of 365");
    next();
    EXPECT_TRUE(isTodayEnabled());
    next();
    EXPECT_EQ(month(), "January 2025");
    EXPECT_FALSE(isTodayEnabled());
    EXPECT_EQ(marked(), std::vector<std::string>{"1"});
}

TEST_F(CalendarPopover, LeavesNothingBehind) {
    open(dateOf(2025, 7, 5));
    view_->appear();
    const View last = body();
    view_.reset();
    EXPECT_EQ(runLoop_.timerCount(), 0U);
    press(last, "Next month");
}

}  // namespace
}  // namespace velmo
