#include "command_output.h"
#include "linux/dates/icu/icu_date_engine.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>

namespace velmo {

namespace {

struct Place {
    const char* posixName;
    const char* tag;
    const char* zone;
};

constexpr Place places[] = {
    {"en_US.UTF-8", "en_US", "America/New_York"},
    {"en_GB.UTF-8", "en_GB", "Europe/London"},
    {"C.UTF-8", "en_US_POSIX", "Etc/UTC"},
    {"POSIX", "en_US_POSIX", "America/Los_Angeles"},
    {"de_DE.UTF-8", "de_DE", "Europe/Berlin"},
    {"de_AT@euro", "de_AT", "Europe/Vienna"},
    {"de-DE-u-ca-buddhist", "de_DE@calendar=buddhist", "Europe/Berlin"},
    {"fr_FR.UTF-8", "fr_FR", "Europe/Paris"},
    {"es_ES.UTF-8", "es_ES", "Europe/Madrid"},
    {"pt_BR.UTF-8", "pt_BR", "America/Sao_Paulo"},
    {"it_IT.ISO-8859-1", "it_IT", "Europe/Rome"},
    {"nl_NL.UTF-8", "nl_NL", "Europe/Amsterdam"},
    {"sv_SE.UTF-8", "sv_SE", "Europe/Stockholm"},
    {"da_DK.UTF-8", "da_DK", "Europe/Copenhagen"},
    {"nb_NO.UTF-8", "nb_NO", "Europe/Oslo"},
    {"fi_FI.UTF-8", "fi_FI", "Europe/Helsinki"},
    {"pl_PL.UTF-8", "pl_PL", "Europe/Warsaw"},
    {"cs_CZ.UTF-8", "cs_CZ", "Europe/Prague"},
    {"hu_HU.UTF-8", "hu_HU", "Europe/Budapest"},
    {"ro_RO.UTF-8", "ro_RO", "Europe/Bucharest"},
    {"bg_BG.UTF-8", "bg_BG", "Europe/Sofia"},
    {"el_GR.UTF-8", "el_GR", "Europe/Athens"},
    {"tr_TR.UTF-8", "tr_TR", "Europe/Istanbul"},
    {"ru_RU.UTF-8", "ru_RU", "Europe/Moscow"},
    {"uk_UA.UTF-8", "uk_UA", "Europe/Kiev"},
    {"sr_RS.UTF-8@latin", "sr_Latn_RS", "Europe/Belgrade"},
    {"ca_ES.UTF-8@valencia", "ca_ES_VALENCIA", "Europe/Madrid"},
    {"he_IL.UTF-8", "he_IL", "Asia/Jerusalem"},
    {"he_IL@calendar=hebrew", "he_IL@calendar=hebrew", "Asia/Jerusalem"},
    {"ar_EG.UTF-8", "ar_EG", "Africa/Cairo"},
    {"ar_SA.UTF-8", "ar_SA", "Asia/Riyadh"},
    {"fa_IR", "fa_IR", "Asia/Tehran"},
    {"ps_AF", "ps_AF", "Asia/Kabul"},
    {"ur_PK", "ur_PK", "Asia/Karachi"},
    {"hi_IN.UTF-8", "hi_IN", "Asia/Kolkata"},
    {"bn_BD", "bn_BD", "Asia/Dhaka"},
    {"mr_IN", "mr_IN", "Asia/Kolkata"},
    {"my_MM", "my_MM", "Asia/Yangon"},
    {"th_TH.UTF-8", "th_TH", "Asia/Bangkok"},
    {"th_TH@calendar=gregorian", "th_TH@calendar=gregorian", "Asia/Bangkok"},
    {"vi_VN", "vi_VN", "Asia/Ho_Chi_Minh"},
    {"ja_JP.UTF-8", "ja_JP", "Asia/Tokyo"},
    {"ja_JP.UTF-8@calendar=japanese", "ja_JP@calendar=japanese", "Asia/Tokyo"},
    {"ko_KR.UTF-8", "ko_KR", "Asia/Seoul"},
    {"zh_CN.UTF-8", "zh_CN", "Asia/Shanghai"},
    {"zh_TW.UTF-8", "zh_TW", "Asia/Taipei"},
    {"zh_TW@calendar=chinese", "zh_TW@calendar=chinese", "Asia/Taipei"},
    {"am_ET", "am_ET", "Africa/Addis_Ababa"},
    {"zu_ZA", "zu_ZA", "Africa/Johannesburg"},
};
static_assert(std::size(places) >= 40);

/// Around ends of years, leap days, changes of the clocks and the epoch.
constexpr Date instants[] = {-1.5e9, 0, 951827696.789, 1711846800, 1735689599, 1783123200, 1795269937.25};

std::vector<std::string> patterns() {
    std::vector<std::string> patterns = {"EEE d MMM  HH:mm",
                                         "EEE MMM d  h:mm a",
                                         "d EEE h:mma",
                                         "d MMM  HH:mm",
                                         "EEE d/M  HH:mm",
                                         "HH:mm:ss",
                                         "'W'w  EEE d MMM  HH:mm",
                                         "EEEE d MMMM",
                                         "",
                                         " ",
                                         "''",
                                         "'o''clock'",
                                         "h 'o''clock' a",
                                         "'unfinished d",
                                         "d'd'd''d'",
                                         "''''",
                                         "''HH''",
                                         "d.M.yyyy",
                                         "yyyy-MM-dd'T'HH:mm:ss.SSSXXX",
                                         "日d",
                                         "⏰ HH:mm \xf0\x9f\x95\x90",
                                         "HH\nmm",
                                         "%d {} \\ d",
                                         "!@#$%^&*()_+-=[]|;:,./<>?`~0123456789"};
    // Every field in every width.
    for (const char letter : std::string("GyYuUrQqMLwWdDFgEecabBhHKkmsSAzZOvVXx")) {
        for (std::size_t width = 1; width <= 6; ++width)
            patterns.emplace_back(width, letter);
    }
    return patterns;
}

/// The bytes of the request go through a file, because patterns hold everything that a shell knows.
nlohmann::json ask(const nlohmann::json& request) {
    const auto file = std::filesystem::temp_directory_path() /
                      ("velmo-date-patterns-" + std::to_string(getpid()) + ".json");
    std::ofstream(file) << request;
    bool succeeded = false;
    const auto answer =
        commandOutput("/usr/bin/python3 " + testFile("format_dates.py") + " <" + file.string(), succeeded);
    std::filesystem::remove(file);
    EXPECT_TRUE(succeeded);
    return nlohmann::json::parse(answer, nullptr, false);
}

TEST(DatePatterns, GiveWhatAnotherFormatterGives) {
    const auto allPatterns = patterns();
    ASSERT_GE(allPatterns.size(), 208U);
    const std::vector<std::pair<DateStyle, std::string>> styles = {
        {DateStyle::time, "jms"}, {DateStyle::fullDate, "yMMMMEEEEd"}, {DateStyle::monthAndYear, "yMMMM"}};
    nlohmann::json request = {{"patterns", allPatterns}, {"instants", instants}};
    for (const auto& [style, skeleton] : styles)
        request["skeletons"].push_back(skeleton);
    for (const auto& place : places)
        request["locales"].push_back({{"tag", place.tag}, {"zone", place.zone}});
    const auto answer = ask(request);
    ASSERT_EQ(answer.size(), std::size(places));

    for (std::size_t index = 0; index < std::size(places); ++index) {
        const auto& place = places[index];
        IcuDateEngine engine(place.posixName, {.name = place.zone});
        auto expected = answer[index].begin();
        const auto formatter = engine.makeDateFormatter();
        for (const auto& pattern : allPatterns) {
            formatter->setDateFormat(pattern);
            for (const auto instant : instants) {
                ASSERT_EQ(formatter->string(instant), expected->get<std::string>())
                    << place.posixName << ' ' << pattern << " at " << instant;
                ++expected;
            }
        }
        for (const auto& [style, skeleton] : styles) {
            for (const auto instant : instants) {
                ASSERT_EQ(engine.formatted(instant, style), expected->get<std::string>())
                    << place.posixName << ' ' << skeleton << " at " << instant;
                ++expected;
            }
        }
        EXPECT_EQ(expected, answer[index].end());
    }
}

constexpr Date saturdayAfternoon = 1795269937;  // 2026-11-21 14:05:37 UTC

std::string written(const std::string& locale, const std::string& pattern) {
    IcuDateEngine engine(locale, {.name = "UTC"});
    const auto formatter = engine.makeDateFormatter();
    formatter->setDateFormat(pattern);
    return formatter->string(saturdayAfternoon).value_or("(absent)");
}

TEST(DatePatterns, ReadAsOneWouldWriteThem) {
    EXPECT_EQ(written("en_US.UTF-8", "EEE d MMM  HH:mm"), "Sat 21 Nov  14:05");
    EXPECT_EQ(written("C", "'W'w  EEE d MMM  HH:mm"), "W47  Sat 21 Nov  14:05");
    EXPECT_EQ(written("en_US", "d EEE h:mma"), "21 Sat 2:05PM");
    EXPECT_EQ(written("de_DE.UTF-8", "EEEE d MMMM"), "Samstag 21 November");
    EXPECT_EQ(written("ar_EG.UTF-8", "HH:mm"), "١٤:٠٥");
    EXPECT_EQ(written("th_TH.UTF-8", "y"), "2569");
    EXPECT_EQ(written("fa_IR", "y/M/d"), "۱۴۰۵/۸/۳۰");
    EXPECT_EQ(written("th_TH@calendar=gregorian", "y"), "2026");
}

TEST(DatePatterns, ChangeWithTheMinuteToEitherSide) {
    const auto textsAround = [](const std::string& zone, const char* pattern, Date minute) {
        IcuDateEngine engine("C", {.name = zone});
        const auto formatter = engine.makeDateFormatter();
        formatter->setDateFormat(pattern);
        std::string texts;
        for (const double second : {-0.001, 0.0, 29.5, 30.0, 59.999, 60.0, 59.0, 0.0, -1.0})
            texts += formatter->string(minute + second).value_or("?") + ' ';
        return texts;
    };
    constexpr Date fivePastTwo = 1795269900;  // 2026-11-21 14:05 UTC
    EXPECT_EQ(textsAround("Europe/Berlin", "HH:mm", fivePastTwo),
              "15:04 15:05 15:05 15:05 15:05 15:06 15:05 15:05 15:04 ");
    EXPECT_EQ(textsAround("UTC", "m:ss", fivePastTwo), "4:59 5:00 5:29 5:30 5:59 6:00 5:59 5:00 4:59 ");
    EXPECT_EQ(textsAround("UTC", "S", fivePastTwo), "9 0 5 0 9 0 0 0 0 ");
    // Liberia's clocks were 44 minutes and 30 seconds behind until 1972.
    EXPECT_EQ(textsAround("Africa/Monrovia", "HH:mm", 0),
              "23:15 23:15 23:15 23:16 23:16 23:16 23:16 23:15 23:15 ");
    EXPECT_EQ(textsAround("UTC", "HH:mm", -60), "23:58 23:59 23:59 23:59 23:59 00:00 23:59 23:59 23:58 ");
}

TEST(DatePatterns, AnotherPatternCountsAtOnce) {
    IcuDateEngine engine("C", {.name = "UTC"});
    const auto formatter = engine.makeDateFormatter();
    formatter->setDateFormat("HH:mm");
    EXPECT_EQ(formatter->string(saturdayAfternoon), "14:05");
    formatter->setDateFormat("mm");
    EXPECT_EQ(formatter->string(saturdayAfternoon), "05");
}

TEST(DatePatterns, LettersThatAreNoFieldsCannotBeUsed) {
    for (const char* pattern : {"HH:mm n", "t", "f", "P"})
        EXPECT_EQ(written("en_US", pattern), "(absent)") << pattern;
    EXPECT_EQ(written("en_US", "HH:mm 'n'"), "14:05 n");
    EXPECT_EQ(written("en_US", ""), "");
}

TEST(DatePatterns, BrokenTextAndImpossibleDatesAreHarmless) {
    EXPECT_EQ(written("en_US", "HH \xff\xfe"), "14 \xef\xbf\xbd\xef\xbf\xbd");
    EXPECT_EQ(written("no such locale at all", "EEE"), "Sat");
    EXPECT_EQ(written("", "EEE"), "Sat");
    IcuDateEngine engine("C", {});
    const auto formatter = engine.makeDateFormatter();
    EXPECT_EQ(formatter->string(0), "") << "no pattern was set";
    formatter->setDateFormat("y");
    EXPECT_EQ(formatter->string(0), "1970");
    EXPECT_EQ(formatter->string(std::numeric_limits<double>::quiet_NaN()), std::nullopt);
    EXPECT_EQ(formatter->string(std::numeric_limits<double>::infinity()), std::nullopt);
    EXPECT_TRUE(formatter->string(1e300)) << "the last date that there is";
}

}  // namespace

}  // namespace velmo
