#include "clock/clock_format.h"

#include "platform/simulated/simulated_dates.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

/// Saturday, 5 July 2025, 13:04:09 UTC.
constexpr Date saturday = 1751720649;

TEST(ClockFormat, HasEightPresetsInTheirOrder) {
    EXPECT_EQ(ClockFormat::presets(), (std::vector<ClockFormat>{
                                          {"Day, date and time", "EEE d MMM  HH:mm"},
                                          {"Day, date and 12-hour time", "EEE MMM d  h:mm a"},
                                          {"Compact day and time", "d EEE h:mma"},
                                          {"Date and time", "d MMM  HH:mm"},
                                          {"Numeric date and time", "EEE d/M  HH:mm"},
                                          {"Time with seconds", "HH:mm:ss"},
                                          {"Week number, day, date and time", "'W'w  EEE d MMM  HH:mm"},
                                          {"Date only", "EEEE d MMMM"},
                                      }));
}

TEST(ClockFormat, IsIdentifiedByItsPattern) {
    EXPECT_EQ((ClockFormat{"One", "HH"}).id(), (ClockFormat{"Other", "HH"}).id());
    EXPECT_NE((ClockFormat{"One", "HH"}).id(), (ClockFormat{"One", "mm"}).id());
}

TEST(ClockFormat, EqualsWhatHasTheSameNameAndPattern) {
    const ClockFormat format{"One", "HH"};
    EXPECT_EQ(format, (ClockFormat{"One", "HH"}));
    EXPECT_NE(format, (ClockFormat{"Other", "HH"}));
    EXPECT_NE(format, (ClockFormat{"One", "mm"}));
}

TEST(ClockFormat, HashesByNameAndPattern) {
    const std::hash<ClockFormat> hash;
    EXPECT_EQ(hash({"One", "HH"}), hash({"One", "HH"}));
    EXPECT_NE(hash({"One", "HH"}), hash({"Other", "HH"}));
    EXPECT_NE(hash({"One", "HH"}), hash({"One", "mm"}));
}

TEST(ClockFormat, PreviewsADate) {
    SimulatedDates dates;
    EXPECT_EQ(ClockFormat::preview("EEE d MMM  HH:mm", saturday, dates), "Sat 5 Jul  13:04");
    EXPECT_EQ(ClockFormat::preview("d EEE h:mma", saturday, dates), "5 Sat 1:04PM");
}

TEST(ClockFormat, PreviewsNothingAsEmpty) {
    SimulatedDates dates;
    EXPECT_EQ(ClockFormat::preview("", saturday, dates), "(empty)");
    EXPECT_EQ(ClockFormat::preview("''", saturday, dates), "(empty)");
    EXPECT_EQ(ClockFormat::preview(" ", saturday, dates), " ");
}

TEST(ClockFormat, PreviewsAPatternThatCannotBeUsedAsEmpty) {
    SimulatedDates dates;
    dates.setRefusesPatterns(true);
    EXPECT_EQ(ClockFormat::preview("HH", saturday, dates), "(empty)");
}

TEST(ClockFormat, PreviewsWithAFormatterOfItsOwn) {
    SimulatedDates dates;
    ClockFormat::preview("HH", saturday, dates);
    ClockFormat::preview("HH", saturday, dates);
    EXPECT_EQ(dates.formatterCount(), 2);
}

}  // namespace
}  // namespace velmo
