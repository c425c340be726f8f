#include "linux/dates/time_zone_setting.h"
#include "command_output.h"
#include "platform/linux/temporary_folder.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fstream>

namespace velmo {

namespace {

namespace fs = std::filesystem;

/// A pipe as full as it can be, and held open at both ends, so that a reader finds bytes instead of waiting
/// for ever.
class FullPipe {
public:
    explicit FullPipe(const fs::path& path) {
        EXPECT_EQ(mkfifo(path.c_str(), 0600), 0);
        pipe_ = open(path.c_str(), O_RDWR | O_NONBLOCK);
        const std::string content(size, 'x');
        EXPECT_EQ(::write(pipe_, content.data(), content.size()), size);
    }
    ~FullPipe() { close(pipe_); }
    FullPipe(const FullPipe&) = delete;
    FullPipe& operator=(const FullPipe&) = delete;

    bool isLeftAlone() const {
        int left = 0;
        return ioctl(pipe_, FIONREAD, &left) == 0 && left == size;
    }

private:
    static constexpr int size = 65536;

    int pipe_ = -1;
};

class TimeZoneSettings : public testing::Test {
protected:
    void write(const fs::path& file, const std::string& content) const { std::ofstream(file) << content; }
    void link(const fs::path& target) const {
        fs::remove(files_.localTime);
        fs::create_symlink(target, files_.localTime);
    }
    TimeZoneSetting read(const char* variable = nullptr) const {
        return readTimeZoneSetting(variable, files_);
    }

    TemporaryFolder folder_;
    TimeZoneFiles files_{folder_.path() / "localtime", folder_.path() / "timezone"};
};

TEST_F(TimeZoneSettings, NameComesFromTheLink) {
    link("/usr/share/zoneinfo/Europe/Berlin");
    EXPECT_EQ(read(), (TimeZoneSetting{"Europe/Berlin", zoneFile("Europe/Berlin"), ""}));
    link("/usr/share/zoneinfo/posix/Asia/Tokyo");
    EXPECT_EQ(read().name, "Asia/Tokyo");
}

TEST_F(TimeZoneSettings, NameComesFromTheFirstOfSeveralLinksIntoTheDatabase) {
    const auto between = folder_.path() / "between";
    fs::create_symlink("/usr/share/zoneinfo/US/Pacific", between);
    link("between");
    EXPECT_EQ(read(), (TimeZoneSetting{"US/Pacific", zoneFile("America/Los_Angeles"), ""}));
}

TEST_F(TimeZoneSettings, NameOfACopyStandsBesideIt) {
    write(files_.localTime, zoneFile("Asia/Kolkata"));
    write(files_.zoneName, "Asia/Kolkata\n");
    EXPECT_EQ(read(), (TimeZoneSetting{"Asia/Kolkata", zoneFile("Asia/Kolkata"), ""}));
    write(files_.zoneName, "Europe/Paris\n");
    EXPECT_EQ(read(), (TimeZoneSetting{"", zoneFile("Asia/Kolkata"), ""})) << "the name of another zone";
    write(files_.zoneName, "../../../etc/passwd\n");
    EXPECT_EQ(read().name, "");
}

TEST_F(TimeZoneSettings, NameAloneIsEnough) {
    write(files_.zoneName, "Europe/Paris\n");
    EXPECT_EQ(read(), (TimeZoneSetting{"Europe/Paris", zoneFile("Europe/Paris"), ""}));
    fs::remove(files_.zoneName);
    EXPECT_EQ(read(), TimeZoneSetting{});
}

TEST_F(TimeZoneSettings, NameIsNotReadFromAPipe) {
    const FullPipe pipe(files_.zoneName);
    EXPECT_EQ(read(), TimeZoneSetting{});
    EXPECT_TRUE(pipe.isLeftAlone());
}

TEST_F(TimeZoneSettings, ZonesAreNotReadFromAPipe) {
    const auto zone = folder_.path() / "zone";
    const FullPipe pipe(zone);
    link(zone);
    EXPECT_EQ(read(), TimeZoneSetting{});
    ASSERT_TRUE(pipe.isLeftAlone()) << "as the system's";
    EXPECT_EQ(read(zone.c_str()).file, "");
    ASSERT_TRUE(pipe.isLeftAlone()) << "as a path in the environment";
    files_.database = folder_.path();
    EXPECT_EQ(read("zone").file, "");
    ASSERT_TRUE(pipe.isLeftAlone()) << "as one of the database";
}

TEST_F(TimeZoneSettings, OfAHugeFileNoMoreThanTheBeginningIsRead) {
    const auto zone = folder_.path() / "zone";
    write(zone, std::string(100000, 'x'));
    link(zone);
    files_.database = folder_.path();
    const std::string beginning(65536, 'x');
    EXPECT_EQ(read().file, beginning);
    EXPECT_EQ(read(zone.c_str()).file, beginning);
    EXPECT_EQ(read("zone").file, beginning);
}

TEST_F(TimeZoneSettings, VariableTakesTheSystemsPlace) {
    link("/usr/share/zoneinfo/Europe/Berlin");
    const TimeZoneSetting tokyo{"Asia/Tokyo", zoneFile("Asia/Tokyo"), ""};
    EXPECT_EQ(read("Asia/Tokyo"), tokyo);
    EXPECT_EQ(read(":Asia/Tokyo"), tokyo);
    EXPECT_EQ(read("/usr/share/zoneinfo/Asia/Tokyo"), tokyo);
    EXPECT_EQ(read("").name, "UTC");
    EXPECT_EQ(read("<+03>-3").rules, "<+03>-3");
    EXPECT_EQ(read("../../../etc/passwd").file, "");
    EXPECT_TRUE(overridesSystemTimeZone("Asia/Tokyo", files_));
}

TEST_F(TimeZoneSettings, VariableThatNamesTheSystemsFileTakesNoPlace) {
    link("/usr/share/zoneinfo/Europe/Berlin");
    const auto variable = ":" + files_.localTime.string();
    EXPECT_FALSE(overridesSystemTimeZone(variable, files_));
    EXPECT_EQ(read(variable.c_str()).name, "Europe/Berlin");
}

}  // namespace

}  // namespace velmo
