#include "linux/dates/icu/system_time_zone.h"
#include "command_output.h"
#include "linux/dates/icu/posix_time_zone.h"
#include "linux/dates/icu/tzif.h"

#include <gtest/gtest.h>

#include <unicode/unistr.h>

#include <sstream>

namespace velmo {

namespace {

int offset(const icu::TimeZone& zone, double time) {
    UErrorCode status = U_ZERO_ERROR;
    int32_t standard = 0;
    int32_t savings = 0;
    zone.getOffset(time * 1000, false, standard, savings, status);
    return (standard + savings) / 1000;
}

std::string name(const icu::TimeZone& zone) {
    icu::UnicodeString identifier;
    std::string result;
    return zone.getID(identifier).toUTF8String(result);
}

constexpr const char* zones[] = {
    "Europe/Berlin",       "Europe/Dublin",    "America/New_York", "America/Mexico_City", "America/Asuncion",
    "America/Nuuk",        "America/St_Johns", "America/Havana",   "America/Sao_Paulo",   "Africa/Cairo",
    "Africa/Casablanca",   "Asia/Almaty",      "Asia/Gaza",        "Asia/Tehran",         "Asia/Kathmandu",
    "Australia/Lord_Howe", "Pacific/Apia",     "Pacific/Easter",   "Antarctica/Troll",    "Etc/GMT+5"};

/// Every ten days and seven hours from 1970 to 2060, by Python's reader of the same database.
TEST(SystemTimeZone, ClocksShowWhatTheSystemsDatabaseSays) {
    constexpr int step = 10 * 86400 + 7 * 3600;
    for (const char* zone : zones) {
        std::ostringstream command;
        command
            << "/usr/bin/python3 -c 'from datetime import datetime as d; from zoneinfo import ZoneInfo as z\n"
            << "for t in range(0, 2840140800, " << step << "): print(int(d.fromtimestamp(t, z(\"" << zone
            << "\")).utcoffset().total_seconds()))'";
        bool succeeded = false;
        std::istringstream expected(commandOutput(command.str(), succeeded));
        ASSERT_TRUE(succeeded);
        const auto own = makeTimeZone({.name = zone, .file = zoneFile(zone)});
        const auto nameless = makeTimeZone({.file = zoneFile(zone)});
        double time = 0;
        for (int seconds = 0; expected >> seconds; time += step) {
            ASSERT_EQ(offset(*own, time), seconds) << zone << " at " << time;
            ASSERT_EQ(offset(*nameless, time), seconds) << zone << " at " << time;
        }
        EXPECT_GT(time, 2.8e9);
        EXPECT_EQ(name(*own), zone);
    }
}

TEST(SystemTimeZone, ZoneThatIcuDoesNotKnowWorksFromItsFile) {
    const auto zone = makeTimeZone({.name = "Europe/Atlantis", .file = zoneFile("Europe/Berlin")});
    EXPECT_EQ(offset(*zone, 1735689600), 3600);
    EXPECT_EQ(offset(*zone, 1751328000), 7200);
}

TEST(SystemTimeZone, RulesWorkWithoutADatabase) {
    const auto zone =
        makeTimeZone({.name = "CET-1CEST,M3.5.0,M10.5.0/3", .rules = "CET-1CEST,M3.5.0,M10.5.0/3"});
    EXPECT_EQ(offset(*zone, 1743296400 - 1), 3600);
    EXPECT_EQ(offset(*zone, 1743296400), 7200) << "2025-03-30 01:00 UTC";
    EXPECT_EQ(offset(*zone, 1761440400 - 1), 7200);
    EXPECT_EQ(offset(*zone, 1761440400), 3600) << "2025-10-26 01:00 UTC";
    EXPECT_EQ(offset(*makeTimeZone({.rules = "GMT+3"}), 0), -3 * 3600) << "POSIX counts westward";
}

TEST(SystemTimeZone, NothingUsableIsUtc) {
    for (const TimeZoneSetting& setting :
         {TimeZoneSetting{}, TimeZoneSetting{"Nowhere/Land", "", "Nowhere/Land"},
          TimeZoneSetting{"", "TZif", ""}, TimeZoneSetting{"", std::string(5000, '\xff'), "?"}})
        EXPECT_EQ(offset(*makeTimeZone(setting), 1751328000), 0) << setting.name;
    EXPECT_EQ(offset(*makeTimeZone({.name = "Asia/Tokyo"}), 0), 9 * 3600) << "a name alone";
}

/// Any byte may be anything, and so may the highest bytes of a number.
TEST(SystemTimeZone, DamagedFilesMakeUpNoOffsetThatNoClockHas) {
    constexpr int day = 86400;
    const auto whole = zoneFile("Asia/Tokyo");
    ASSERT_TRUE(parseTzif(whole));
    for (std::size_t place = 0; place + 1 < whole.size(); ++place) {
        for (const char value : {'\0', '\x7f', '\x80', '\xff'}) {
            auto damaged = whole;
            damaged[place] = value;
            const auto zone = makeTimeZone({.file = damaged});
            for (const double time : {-1e14, -2e9, 0.0, 2e9, 1e14}) {
                EXPECT_LT(offset(*zone, time), day) << place;
                EXPECT_GT(offset(*zone, time), -day) << place;
            }
        }
    }
}

TEST(SystemTimeZone, NamesOfOffsetsThatNoClockHasAreNone) {
    EXPECT_EQ(offset(*makeTimeZone({.name = "GMT-11:30"}), 0), -41400);
    EXPECT_EQ(offset(*makeTimeZone({.name = "GMT-25E61"}), 0), 0);
    EXPECT_EQ(offset(*makeTimeZone({.name = "GMT+9E9"}), 0), 0);
}

TEST(SystemTimeZone, ChangesBeforeAndAfterAllTimesAreOfNoHarm) {
    auto file = zoneFile("Europe/Berlin");
    constexpr std::size_t header = 44;
    const auto second = file.find("TZif", header);
    ASSERT_NE(second, std::string::npos);
    // The numbers are big-endian; the count of transitions is the fourth of six.
    const auto* counts = reinterpret_cast<const unsigned char*>(file.data() + second + 20);
    const std::size_t count = std::size_t{counts[14]} << 8 | counts[15];
    ASSERT_GT(count, 100U);
    file.replace(second + header, 8, "\x80" + std::string(7, '\0'));
    file.replace(second + header + 8 * (count - 1), 8, "\x7f" + std::string(7, '\xff'));
    const auto zone = parseTzif(file);
    ASSERT_TRUE(zone);
    EXPECT_LT(zone->transitions.front().time, -3'000'000'000'000);
    EXPECT_GT(zone->transitions.back().time, 3'000'000'000'000);
    EXPECT_EQ(offset(*makeTimeZone({.file = file}), 1735689600), 3600);
    // The rules begin only after the last change.
    EXPECT_EQ(offset(*makeTimeZone({.file = file}), 1e10), 7200);
}

TEST(Tzif, DamagedFilesAreRefused) {
    const auto whole = zoneFile("America/Sao_Paulo");
    ASSERT_TRUE(parseTzif(whole));
    EXPECT_GT(parseTzif(whole)->transitions.size(), 50U);
    EXPECT_EQ(parseTzif(whole)->rules, "<-03>3");
    for (std::size_t size = 0; size + 10 < whole.size(); ++size)
        EXPECT_FALSE(parseTzif(whole.substr(0, size))) << size;
    // Any byte may be anything.
    for (std::size_t place = 0; place < whole.size(); ++place) {
        for (const char value : {'\0', '\x7f', '\xff'}) {
            auto damaged = whole;
            damaged[place] = value;
            const auto zone = parseTzif(damaged);
            EXPECT_TRUE(!zone || !zone->types.empty());
        }
    }
}

TEST(PosixTimeZone, IsReadInFull) {
    const auto zone = parsePosixTimeZone("<-0330>3:30NDT2:30:15,M3.2.0/-1,J300/167");
    ASSERT_TRUE(zone && zone->daylight);
    EXPECT_EQ(zone->standard.abbreviation, "-0330");
    EXPECT_EQ(zone->standard.offset, -12600);
    EXPECT_EQ(zone->daylight->abbreviation, "NDT");
    EXPECT_EQ(zone->daylight->offset, -9015);
    EXPECT_EQ(zone->daylightStart.month, 3);
    EXPECT_EQ(zone->daylightStart.week, 2);
    EXPECT_EQ(zone->daylightStart.day, 0);
    EXPECT_EQ(zone->daylightStart.time, -3600);
    EXPECT_EQ(zone->daylightEnd.month, 10) << "the 300th day is the 27th of October";
    EXPECT_EQ(zone->daylightEnd.week, 0);
    EXPECT_EQ(zone->daylightEnd.day, 27);
    EXPECT_EQ(zone->daylightEnd.time, 167 * 3600);
}

TEST(PosixTimeZone, ClocksChangeAsInTheUnitedStatesWhereNoRuleIsGiven) {
    const auto zone = parsePosixTimeZone("EST5EDT");
    ASSERT_TRUE(zone && zone->daylight);
    EXPECT_EQ(zone->daylight->offset, -4 * 3600);
    EXPECT_EQ(zone->daylightStart.month, 3);
    EXPECT_EQ(zone->daylightEnd.month, 11);
}

TEST(PosixTimeZone, AnythingElseIsRefused) {
    EXPECT_TRUE(parsePosixTimeZone("UTC0"));
    EXPECT_TRUE(parsePosixTimeZone("CET-23:59:59"));
    for (const char* text : {"",
                             "UTC",
                             "AB3",
                             "CET-1CEST,",
                             "CET-1CEST,M3.5.0",
                             "CET-1CEST,M13.5.0,M10.5.0",
                             "CET-1CEST,M3.6.0,M10.5.0",
                             "CET-1CEST,M3.5.7,M10.5.0",
                             "CET-1CEST,M3.5.0,M10.5.0/168",
                             "CET-1CEST,M3.5.0,M10.5.0 ",
                             "CET-24",
                             "CET24",
                             "CET-23:30CEST",
                             "CET-1CEST-24",
                             "CET-168",
                             "<UTC0",
                             "CET-1CEST,J0,J10",
                             "CET-1CEST,J366,J10",
                             "Europe/Berlin",
                             "CET--1",
                             "CET-1:60"})
        EXPECT_FALSE(parsePosixTimeZone(text)) << text;
}

}  // namespace

}  // namespace velmo
