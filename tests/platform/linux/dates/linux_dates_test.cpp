#include "linux/dates/linux_dates.h"

#include "command_output.h"
#include "platform/linux/temporary_folder.h"

#include <gtest/gtest.h>

#include <poll.h>

#include <cstdlib>
#include <fstream>

namespace velmo {

namespace {

namespace fs = std::filesystem;

constexpr Date evening = 1795300200;  // 2026-11-21 22:30 UTC

/// The program's modules stand beside the tests' program.
class SystemDates : public testing::Test {
protected:
    void SetUp() override {
        unsetenv("TZ");
        setenv("LC_ALL", "en_GB.UTF-8", 1);
        fs::create_symlink("/usr/share/zoneinfo/Europe/Berlin", files_.localTime);
    }
    void TearDown() override {
        unsetenv("TZ");
        unsetenv("LC_ALL");
    }

    /// As programs that set the zone do it.
    void replaceLink(const std::string& zone) const {
        const auto next = folder_.path() / "next";
        fs::create_symlink("/usr/share/zoneinfo/" + zone, next);
        fs::rename(next, files_.localTime);
    }
    /// True where the loop has anything to do.
    bool wakes() const {
        pollfd loop{.fd = loop_.descriptor(), .events = POLLIN, .revents = 0};
        return poll(&loop, 1, 0) == 1;
    }

    TemporaryFolder folder_;
    TimeZoneFiles files_{folder_.path() / "localtime", folder_.path() / "timezone"};
    EventLoop loop_;
};

TEST_F(SystemDates, ReplacedLinkIsAnnouncedAndFollowed) {
    LinuxDates dates(loop_, files_);
    const auto formatter = dates.makeDateFormatter();
    formatter->setDateFormat("d HH:mm");
    std::string seen;
    const auto observer =
        dates.observeTimeZone([&] { seen += formatter->string(evening).value_or("?") + ";"; });
    ASSERT_EQ(formatter->string(evening), "21 23:30");
    replaceLink("Asia/Tokyo");
    EXPECT_EQ(formatter->string(evening), "21 23:30") << "not before the loop has heard of it";
    loop_.turn();
    EXPECT_EQ(seen, "22 07:30;");
    EXPECT_EQ(dates.currentCalendar().component(CalendarUnit::day, evening), 22);
    EXPECT_EQ(dates.formatted(evening, DateStyle::monthAndYear), "November 2026");
}

TEST_F(SystemDates, LinkThatGoesAndComesIsFollowed) {
    LinuxDates dates(loop_, files_);
    int changes = 0;
    const auto observer = dates.observeTimeZone([&] { ++changes; });
    fs::remove(files_.localTime);
    fs::create_symlink("/usr/share/zoneinfo/Asia/Tokyo", files_.localTime);
    loop_.turn();
    EXPECT_EQ(changes, 1);
}

TEST_F(SystemDates, WrittenFileAndNameAreFollowed) {
    LinuxDates dates(loop_, files_);
    int changes = 0;
    const auto observer = dates.observeTimeZone([&] { ++changes; });
    fs::remove(files_.localTime);
    std::ofstream(files_.localTime) << zoneFile("America/New_York");
    std::ofstream(files_.zoneName) << "America/New_York\n";
    loop_.turn();
    EXPECT_EQ(changes, 1);
    const auto formatter = dates.makeDateFormatter();
    formatter->setDateFormat("HH:mm zzzz");
    EXPECT_EQ(formatter->string(evening), "17:30 Eastern Standard Time");
}

TEST_F(SystemDates, SameZoneAgainIsNoChange) {
    LinuxDates dates(loop_, files_);
    int changes = 0;
    const auto observer = dates.observeTimeZone([&] { ++changes; });
    replaceLink("Europe/Berlin");
    std::ofstream(folder_.path() / "hostname") << "something else";
    loop_.turn();
    EXPECT_EQ(changes, 0);
    replaceLink("Europe/London");
    loop_.turn();
    EXPECT_EQ(changes, 1);
}

TEST_F(SystemDates, NobodyWatchesWhereNobodyObserves) {
    LinuxDates dates(loop_, files_);
    replaceLink("Asia/Tokyo");
    EXPECT_FALSE(wakes());
    int changes = 0;
    auto observer = dates.observeTimeZone([&] { ++changes; });
    EXPECT_EQ(changes, 0);
    EXPECT_FALSE(wakes()) << "asleep until the zone changes";
    replaceLink("Europe/Berlin");
    EXPECT_TRUE(wakes());
    observer.reset();
    EXPECT_FALSE(wakes());
    loop_.turn();
    EXPECT_EQ(changes, 0);
}

TEST_F(SystemDates, ZoneIsReadAnewWhenObservingBegins) {
    LinuxDates dates(loop_, files_);
    const auto formatter = dates.makeDateFormatter();
    formatter->setDateFormat("HH:mm");
    ASSERT_EQ(formatter->string(evening), "23:30");
    replaceLink("Asia/Tokyo");
    const auto observer = dates.observeTimeZone([] {});
    EXPECT_EQ(formatter->string(evening), "07:30");
}

TEST_F(SystemDates, ObserverMayEndItselfAndOthers) {
    LinuxDates dates(loop_, files_);
    int changes = 0;
    std::unique_ptr<NotificationObserver> first;
    std::unique_ptr<NotificationObserver> second;
    first = dates.observeTimeZone([&] {
        ++changes;
        second.reset();
        first.reset();
    });
    second = dates.observeTimeZone([&] { ++changes; });
    replaceLink("Asia/Tokyo");
    loop_.turn();
    EXPECT_EQ(changes, 1);
    replaceLink("Europe/Berlin");
    loop_.turn();
    EXPECT_EQ(changes, 1);
}

TEST_F(SystemDates, VariableHoldsWhateverTheSystemIsSetTo) {
    setenv("TZ", "America/New_York", 1);
    LinuxDates dates(loop_, files_);
    const auto formatter = dates.makeDateFormatter();
    formatter->setDateFormat("HH:mm");
    const auto observer = dates.observeTimeZone([] { FAIL(); });
    replaceLink("Asia/Tokyo");
    EXPECT_FALSE(wakes());
    loop_.turn();
    EXPECT_EQ(formatter->string(evening), "17:30");
}

TEST_F(SystemDates, FormatterTakesANewPatternAtAnyTime) {
    LinuxDates dates(loop_, files_);
    const auto formatter = dates.makeDateFormatter();
    formatter->setDateFormat("HH");
    formatter->setDateFormat("mm");
    EXPECT_EQ(formatter->string(evening), "30");
    formatter->setDateFormat("");
    EXPECT_EQ(formatter->string(evening), "");
    formatter->setDateFormat("HH n");
    EXPECT_EQ(formatter->string(evening), std::nullopt);
}

TEST(DateLocale, IsTheFirstThatIsSetOfThreeVariables) {
    for (const char* name : {"LC_ALL", "LC_TIME", "LANG"})
        unsetenv(name);
    EXPECT_EQ(dateLocaleFromEnvironment(), "C");
    setenv("LANG", "de_DE.UTF-8", 1);
    EXPECT_EQ(dateLocaleFromEnvironment(), "de_DE.UTF-8");
    setenv("LC_TIME", "fr_FR.UTF-8", 1);
    EXPECT_EQ(dateLocaleFromEnvironment(), "fr_FR.UTF-8");
    setenv("LC_ALL", "", 1);
    EXPECT_EQ(dateLocaleFromEnvironment(), "fr_FR.UTF-8") << "empty is not set";
    setenv("LC_ALL", "ja_JP.UTF-8", 1);
    EXPECT_EQ(dateLocaleFromEnvironment(), "ja_JP.UTF-8");
    for (const char* name : {"LC_ALL", "LC_TIME", "LANG"})
        unsetenv(name);
}

}  // namespace

}  // namespace velmo
