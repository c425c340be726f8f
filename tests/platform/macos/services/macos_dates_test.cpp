#include "macos/services/macos_dates.h"
#include "macos/foundation/ns_notification_center.h"
#include "platform/macos/doubles/added_method.h"
#include "platform/macos/doubles/counted_object.h"
#include "platform/macos/macos_test.h"

#include <string>
#include <thread>
#include <vector>

namespace velmo::macos {
namespace {

// In Berlin, where the tests take place.
constexpr Date startOfFebruary2024 = 1706742000;
constexpr Date startOfMarch2024 = 1709247600;
constexpr Date startOf2024 = 1704063600;
constexpr Date startOf2025 = 1735686000;
constexpr Date noonOnNewYearsEve2024 = 1735642800;
constexpr Date hour = 3600;
constexpr Date day = 24 * hour;

int& formattersMade() {
    static int made = 0;
    return made;
}
Id initializeCounted(Id formatter, Selector /*selector*/) {
    ++formattersMade();
    return doubles::callOwnInitializer<&initializeCounted>(formatter);
}
bool countFormatters() {
    doubles::overrideInitializer<"init", &initializeCounted>(classNamed<"NSDateFormatter">());
    return true;
}

void postTimeZoneChange() {
    Message<"NSNotificationCenter", false, "postNotificationName:object:", void, NSString, Object>::send(
        NSNotificationCenter::defaultCenter().get(), systemTimeZoneDidChange.value(), Object());
}

class MacosDatesTest : public MacosTest {
protected:
    MacosDates dates;
    const Calendar& calendar = dates.currentCalendar();
};

TEST_F(MacosDatesTest, KnowsWhereMonthsAndYearsStartAndEnd) {
    for (const Date date : {startOfFebruary2024, startOfMarch2024 - 1}) {
        const auto month = calendar.dateInterval(CalendarUnit::month, date);
        ASSERT_TRUE(month);
        EXPECT_EQ(month->start, startOfFebruary2024);
        EXPECT_EQ(month->end, startOfMarch2024);
    }
    const auto year = calendar.dateInterval(CalendarUnit::year, startOfMarch2024);
    ASSERT_TRUE(year);
    EXPECT_EQ(year->start, startOf2024);
    EXPECT_EQ(year->end, startOf2025);
}

TEST_F(MacosDatesTest, CountsTheDaysOfMonthsAndYears) {
    EXPECT_EQ(calendar.dayCount(CalendarUnit::month, startOfFebruary2024), 29);
    EXPECT_EQ(calendar.dayCount(CalendarUnit::month, startOfMarch2024), 31);
    EXPECT_EQ(calendar.dayCount(CalendarUnit::year, startOfMarch2024), 366);
    EXPECT_EQ(calendar.dayCount(CalendarUnit::year, startOf2025), 365);
    EXPECT_EQ(calendar.ordinalityOfDay(CalendarUnit::year, noonOnNewYearsEve2024), 366);
    EXPECT_EQ(calendar.ordinalityOfDay(CalendarUnit::year, startOf2025), 1);
}

TEST_F(MacosDatesTest, TellsNothingOfUnitsThatTheCalendarDoesNotCount) {
    EXPECT_EQ(calendar.dateInterval(CalendarUnit::weekday, startOfMarch2024), std::nullopt);
    EXPECT_EQ(calendar.dayCount(CalendarUnit::weekday, startOfMarch2024), std::nullopt);
    EXPECT_EQ(calendar.ordinalityOfDay(CalendarUnit::weekday, startOfMarch2024), std::nullopt);
}

TEST_F(MacosDatesTest, TellsThePartsOfADate) {
    EXPECT_EQ(calendar.component(CalendarUnit::day, startOfMarch2024 - 1), 29);
    EXPECT_EQ(calendar.component(CalendarUnit::month, startOfMarch2024 - 1), 2);
    EXPECT_EQ(calendar.component(CalendarUnit::year, startOf2025 - 1), 2024);
    // A Friday.
    EXPECT_EQ(calendar.component(CalendarUnit::weekday, startOfMarch2024), 6);
    EXPECT_EQ(calendar.component(CalendarUnit::weekOfYear, startOfMarch2024), 9);
}

TEST_F(MacosDatesTest, AddsDaysThatAreShorterAndMonthsThatAre) {
    // Summer time starts on 31 March 2024.
    const Date startOf31March = startOfMarch2024 + 30 * day;
    EXPECT_EQ(calendar.dateByAdding(CalendarUnit::day, 1, startOf31March), startOf31March + 23 * hour);
    EXPECT_EQ(calendar.dateByAdding(CalendarUnit::month, -1, startOf31March), startOfMarch2024 - day);
    EXPECT_EQ(calendar.dateByAdding(CalendarUnit::year, 1, startOf2024), startOf2025);
}

TEST_F(MacosDatesTest, TellsWhetherTwoDatesLieInTheSameDayOrMonth) {
    EXPECT_TRUE(calendar.isSameDay(startOfMarch2024, startOfMarch2024 + day - 1));
    EXPECT_FALSE(calendar.isSameDay(startOfMarch2024, startOfMarch2024 - 1));
    EXPECT_TRUE(calendar.isSameMonth(startOfFebruary2024, startOfMarch2024 - 1));
    EXPECT_FALSE(calendar.isSameMonth(startOfMarch2024 - 1, startOfMarch2024));
    EXPECT_FALSE(calendar.isSameMonth(startOf2024, startOf2025));
    EXPECT_FALSE(calendar.isInWeekend(startOfMarch2024));
    EXPECT_TRUE(calendar.isInWeekend(startOfMarch2024 + day));
}

TEST_F(MacosDatesTest, HasASymbolForEachDayOfTheWeek) {
    EXPECT_EQ(calendar.veryShortStandaloneWeekdaySymbols(),
              (std::vector<std::string>{"S", "M", "T", "W", "T", "F", "S"}));
    EXPECT_GE(calendar.firstWeekday(), 1);
    EXPECT_LE(calendar.firstWeekday(), 7);
}

TEST_F(MacosDatesTest, WritesDatesByPatterns) {
    const auto formatter = dates.makeDateFormatter();
    formatter->setDateFormat("yyyy-MM-dd  HH:mm:ss");
    EXPECT_EQ(formatter->string(noonOnNewYearsEve2024), "2024-12-31  12:00:00");
    formatter->setDateFormat("'W'w");
    EXPECT_EQ(formatter->string(startOfMarch2024), "W9");
    formatter->setDateFormat("");
    EXPECT_EQ(formatter->string(startOfMarch2024), "");
}

TEST_F(MacosDatesTest, WritesDatesInTheTimeZoneThatTheUserHasChosenSince) {
    const auto formatter = dates.makeDateFormatter();
    formatter->setDateFormat("HH:mm");
    EXPECT_EQ(formatter->string(noonOnNewYearsEve2024), "12:00");
    system.timeZone = Message<"NSTimeZone", true, "timeZoneWithName:", NSTimeZone, NSString>::send(
        NSTimeZone::classObject(), NSString::from("Asia/Tokyo"));
    EXPECT_EQ(formatter->string(noonOnNewYearsEve2024), "12:00") << "the system keeps what it has said";
    const auto observer = dates.observeTimeZone([] {});
    postTimeZoneChange();
    EXPECT_EQ(formatter->string(noonOnNewYearsEve2024), "20:00");
}

TEST_F(MacosDatesTest, WritesDatesAsTheLocaleHasThem) {
    EXPECT_NE(dates.formatted(noonOnNewYearsEve2024, DateStyle::fullDate).find("2024"), std::string::npos);
    EXPECT_NE(dates.formatted(noonOnNewYearsEve2024, DateStyle::monthAndYear).find("2024"),
              std::string::npos);
    EXPECT_NE(dates.formatted(noonOnNewYearsEve2024, DateStyle::time).find("12"), std::string::npos);
}

TEST_F(MacosDatesTest, WritesManyDatesWithOneFormatterForEachStyle) {
    static const bool isCounting = countFormatters();
    EXPECT_TRUE(isCounting);
    MacosDates fresh;
    const int before = formattersMade();
    const std::string first = fresh.formatted(noonOnNewYearsEve2024, DateStyle::fullDate);
    EXPECT_EQ(formattersMade(), before + 1);
    for (int index = 0; index < 31; ++index)
        EXPECT_NE(fresh.formatted(startOfMarch2024 + index * day, DateStyle::fullDate), first);
    EXPECT_EQ(formattersMade(), before + 1);
    EXPECT_NE(fresh.formatted(noonOnNewYearsEve2024, DateStyle::monthAndYear), first);
    EXPECT_EQ(fresh.formatted(noonOnNewYearsEve2024, DateStyle::fullDate), first);
    EXPECT_EQ(formattersMade(), before + 2);
}

TEST_F(MacosDatesTest, TellsOfAChangedTimeZoneUntilTheObserverGoes) {
    int changes = 0;
    auto observer = dates.observeTimeZone([&] { ++changes; });
    EXPECT_EQ(changes, 0);
    postTimeZoneChange();
    EXPECT_EQ(changes, 1);
    observer.reset();
    postTimeZoneChange();
    EXPECT_EQ(changes, 1);
}

TEST_F(MacosDatesTest, LetsGoOfWhatAnObserverHasUsed) {
    int most = 0;
    const auto observer = dates.observeTimeZone([&] {
        CountedObject::create().leaveToPool();
        most = CountedObject::liveCount();
    });
    const int before = CountedObject::liveCount();
    postTimeZoneChange();
    EXPECT_EQ(most, before + 1);
    EXPECT_EQ(CountedObject::liveCount(), before);
}

TEST_F(MacosDatesTest, HasAChangedTimeZoneReadAnewOnceForAllWhoAreToldOfIt) {
    int changes = 0;
    const auto one = dates.observeTimeZone([&] { ++changes; });
    const auto other = dates.observeTimeZone([&] { ++changes; });
    postTimeZoneChange();
    EXPECT_EQ(changes, 2);
    EXPECT_EQ(system.timeZoneResets, 1);
}

TEST_F(MacosDatesTest, DoesNotReadTheTimeZoneAnewWhereItIsToldOfThatOnlyLater) {
    system.tellsOfResetsLater = true;
    int changes = 0;
    const auto observer = dates.observeTimeZone([&] { ++changes; });
    postTimeZoneChange();
    EXPECT_EQ(system.timeZoneResets, 1);
    postTimeZoneChange();
    EXPECT_EQ(changes, 2);
    EXPECT_EQ(system.timeZoneResets, 1);
    runFor(1.05);
    postTimeZoneChange();
    EXPECT_EQ(changes, 3);
    EXPECT_EQ(system.timeZoneResets, 2);
}

TEST_F(MacosDatesTest, TellsOnTheMainThreadWhatIsPostedOnAnother) {
    std::vector<std::thread::id> threads;
    const auto observer = dates.observeTimeZone([&] { threads.push_back(std::this_thread::get_id()); });
    auto ended = dates.observeTimeZone([&] { threads.emplace_back(); });
    std::thread([] {
        const AutoreleasePool own;
        postTimeZoneChange();
    }).join();
    EXPECT_TRUE(threads.empty());
    ended.reset();
    EXPECT_TRUE(runUntil([&] { return !threads.empty(); }));
    EXPECT_EQ(threads, std::vector{std::this_thread::get_id()});
}

TEST_F(MacosDatesTest, LetsAHandlerEndItsOwnObservation) {
    std::unique_ptr<NotificationObserver> observer;
    int changes = 0;
    observer = dates.observeTimeZone([&] {
        observer.reset();
        ++changes;
    });
    for (int time = 0; time < 2; ++time)
        postTimeZoneChange();
    EXPECT_EQ(changes, 1);
}

}  // namespace
}  // namespace velmo::macos
