#include "linux/defaults/file_user_defaults.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <csignal>
#include <cstdlib>
#include <fstream>

namespace velmo {

namespace {

namespace fs = std::filesystem;

class FileDefaults : public testing::Test {
protected:
    void SetUp() override {
        std::string pattern = fs::temp_directory_path() / "velmo-defaults-XXXXXX";
        folder_ = mkdtemp(pattern.data());
        file_ = folder_ / "below" / "defaults.json";
    }
    void TearDown() override { fs::remove_all(folder_); }

    void write(const std::string& content) const {
        fs::create_directories(file_.parent_path());
        std::ofstream(file_) << content;
    }
    static std::string read(const fs::path& file) {
        std::ifstream stream(file);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    std::size_t filesBeside() const {
        return static_cast<std::size_t>(std::distance(fs::directory_iterator(file_.parent_path()), {}));
    }

    fs::path folder_;
    fs::path file_;
};

TEST_F(FileDefaults, ReturnsWhatAnEarlierProcessStored) {
    const std::string text = "{\"keyCode\":40}";
    const Data readable(text.begin(), text.end());
    const Data bytes = {0, 255, 128};
    {
        FileUserDefaults defaults(file_);
        defaults.setBool(true, "flag");
        defaults.setDouble(2.5, "number");
        defaults.setObject(std::string("EEE d MMM  HH:mm"), "text");
        defaults.setObject(readable, "readable");
        defaults.setObject(bytes, "bytes");
        defaults.setStringList({"a", "b"}, "list");
    }
    const FileUserDefaults defaults(file_);
    EXPECT_TRUE(defaults.boolForKey("flag"));
    EXPECT_EQ(defaults.doubleForKey("number"), 2.5);
    EXPECT_EQ(defaults.stringForKey("text"), "EEE d MMM  HH:mm");
    EXPECT_EQ(defaults.dataForKey("readable"), readable);
    EXPECT_EQ(defaults.dataForKey("bytes"), bytes);
    EXPECT_EQ(defaults.stringListForKey("list"), (std::vector<std::string>{"a", "b"}));
    EXPECT_NE(read(file_).find("keyCode"), std::string::npos) << "data that is text stays readable";
}

TEST_F(FileDefaults, EachChangeIsInTheFileAtOnce) {
    FileUserDefaults defaults(file_);
    EXPECT_FALSE(fs::exists(file_));
    defaults.setDouble(1, "number");
    EXPECT_EQ(FileUserDefaults(file_).doubleForKey("number"), 1);
    defaults.setDouble(2, "number");
    EXPECT_EQ(FileUserDefaults(file_).doubleForKey("number"), 2);
    defaults.removeObject("number");
    EXPECT_EQ(FileUserDefaults(file_).doubleForKey("number"), 0);
    EXPECT_EQ(filesBeside(), 1U) << "no scratch file stays";
}

TEST_F(FileDefaults, ReaderOfTheOldFileStillSeesItWhole) {
    FileUserDefaults defaults(file_);
    defaults.setDouble(1, "number");
    std::ifstream reader(file_);
    const std::string before = read(file_);
    defaults.setObject(std::string(10000, 'x'), "text");
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(reader), {}), before);
}

TEST_F(FileDefaults, KillAtAnyMomentLeavesAWholeFile) {
    FileUserDefaults(file_).setDouble(0, "number");
    for (int round = 0; round < 60; ++round) {
        const pid_t child = fork();
        if (child == 0) {
            FileUserDefaults defaults(file_);
            for (double number = 1;; ++number)
                defaults.setObject(std::string(static_cast<std::size_t>(number) % 5000, 'x'), "text");
        }
        usleep(static_cast<useconds_t>(500 + 137 * round));
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        ASSERT_TRUE(nlohmann::json::parse(read(file_), nullptr, false).is_object()) << round;
    }
    EXPECT_EQ(FileUserDefaults(file_).stringForKey("number"), "0");
}

TEST_F(FileDefaults, ValueOfNoUseLeavesTheRegisteredOne) {
    write(R"({"number": null, "flag": [1]})");
    FileUserDefaults defaults(file_);
    defaults.registerDefaults({{"number", 5.0}, {"flag", true}});
    EXPECT_EQ(defaults.doubleForKey("number"), 5.0);
    EXPECT_TRUE(defaults.boolForKey("flag"));
}

TEST_F(FileDefaults, DanglingLinkIsFilled) {
    const auto target = folder_ / "not-yet.json";
    fs::create_directories(file_.parent_path());
    fs::create_symlink("../not-yet.json", file_);
    FileUserDefaults(file_).setBool(true, "flag");
    EXPECT_TRUE(fs::is_symlink(file_));
    EXPECT_NE(read(target).find("flag"), std::string::npos);
}

TEST_F(FileDefaults, WhatChangesNothingWritesNothing) {
    FileUserDefaults defaults(file_);
    defaults.removeObject("absent");
    defaults.registerDefaults({{"flag", true}});
    EXPECT_FALSE(fs::exists(file_));
    defaults.setBool(true, "flag");
    struct stat before {};
    stat(file_.c_str(), &before);
    defaults.setBool(true, "flag");
    struct stat after {};
    stat(file_.c_str(), &after);
    EXPECT_EQ(before.st_ino, after.st_ino);
}

TEST_F(FileDefaults, StoredValueWinsOverARegisteredOne) {
    FileUserDefaults defaults(file_);
    defaults.registerDefaults({{"flag", true}, {"number", 5.0}});
    EXPECT_TRUE(defaults.boolForKey("flag"));
    defaults.setBool(false, "flag");
    EXPECT_FALSE(defaults.boolForKey("flag"));
    defaults.removeObject("flag");
    EXPECT_TRUE(defaults.boolForKey("flag"));
    EXPECT_EQ(defaults.doubleForKey("number"), 5.0);
}

TEST_F(FileDefaults, DamagedFilesAreSetAsideOneBesideTheOther) {
    for (const char* damaged : {"{\"autoRehide\": fal", "", "[1]", "\xff\xfe", "{}{}"}) {
        write(damaged);
        const FileUserDefaults defaults(file_);
        EXPECT_FALSE(fs::exists(file_)) << damaged;
    }
    EXPECT_EQ(filesBeside(), 5U);
    EXPECT_EQ(read(file_.string() + ".damaged-1"), "{\"autoRehide\": fal");
    EXPECT_EQ(read(file_.string() + ".damaged-5"), "{}{}");
}

TEST_F(FileDefaults, ValuesOfLaterVersionsSurvive) {
    write(R"({"future": {"deep": [1, null, {"x": 2}]}, "flag": true})");
    FileUserDefaults defaults(file_);
    EXPECT_EQ(defaults.stringForKey("future"), std::nullopt);
    defaults.setBool(false, "flag");
    EXPECT_NE(read(file_).find("deep"), std::string::npos);
}

TEST_F(FileDefaults, TextThatIsNoTextDamagesNothing) {
    FileUserDefaults defaults(file_);
    defaults.setObject(std::string("\xff\xfe"), "text");
    defaults.setStringList({"\xc3"}, "list");
    defaults.setDouble(NAN, "number");
    const FileUserDefaults again(file_);
    EXPECT_TRUE(fs::exists(file_));
    EXPECT_EQ(again.stringForKey("text"), defaults.stringForKey("text"));
    EXPECT_EQ(again.stringListForKey("list").size(), 1U);
    EXPECT_EQ(again.doubleForKey("number"), 0);
}

TEST_F(FileDefaults, SymbolicLinkKeepsPointingWhereItDid) {
    const auto target = folder_ / "elsewhere.json";
    std::ofstream(target) << "{}";
    fs::create_directories(file_.parent_path());
    fs::create_symlink(target, file_);
    FileUserDefaults(file_).setBool(true, "flag");
    EXPECT_TRUE(fs::is_symlink(file_));
    EXPECT_NE(read(target).find("flag"), std::string::npos);
}

TEST_F(FileDefaults, WhereNothingCanBeWrittenValuesLastAsLongAsTheProcess) {
    FileUserDefaults defaults("/proc/velmo/defaults.json");
    defaults.setBool(true, "flag");
    EXPECT_TRUE(defaults.boolForKey("flag"));
    FileUserDefaults nowhere(fs::path{});
    nowhere.setBool(true, "flag");
    EXPECT_TRUE(nowhere.boolForKey("flag"));
}

TEST_F(FileDefaults, FolderInTheFilesPlaceIsLeftAlone) {
    fs::create_directories(file_ / "kept");
    FileUserDefaults defaults(file_);
    defaults.setBool(true, "flag");
    EXPECT_TRUE(fs::exists(file_ / "kept"));
}

TEST_F(FileDefaults, PipeInTheFilesPlaceIsLeftAlone) {
    fs::create_directories(file_.parent_path());
    ASSERT_EQ(mkfifo(file_.c_str(), S_IRWXU), 0);
    FileUserDefaults defaults(file_);
    EXPECT_FALSE(defaults.boolForKey("flag"));
    defaults.setBool(true, "flag");
    EXPECT_TRUE(defaults.boolForKey("flag")) << "as long as the program runs";
    EXPECT_TRUE(fs::is_fifo(file_));
}

TEST_F(FileDefaults, OnlyTheUserMayReadThem) {
    for (const mode_t mask : {0000, 0022, 0077}) {
        const auto former = umask(mask);
        FileUserDefaults(file_).setBool(true, "flag");
        umask(former);
        EXPECT_EQ(fs::status(file_).permissions(), fs::perms::owner_read | fs::perms::owner_write) << mask;
        EXPECT_EQ(fs::status(file_.parent_path()).permissions(), fs::perms::owner_all) << mask;
        fs::remove_all(file_.parent_path());
    }
}

/// What lies so deep could be read, and not be written again.
TEST_F(FileDefaults, ThatAreTooDeepAreSetAside) {
    const auto nested = [](std::size_t depth) {
        return R"({"flag": true, "deep": )" + std::string(depth, '[') + std::string(depth, ']') + "}";
    };
    write(nested(90));
    {
        FileUserDefaults defaults(file_);
        EXPECT_TRUE(defaults.boolForKey("flag"));
        defaults.setBool(true, "other");
    }
    EXPECT_EQ(filesBeside(), 1U);
    EXPECT_NE(read(file_).find("[]"), std::string::npos) << "it is kept";
    for (const std::size_t depth : {110, 200000}) {
        write(nested(depth));
        FileUserDefaults defaults(file_);
        EXPECT_FALSE(defaults.boolForKey("flag"));
        defaults.setBool(true, "other");
        EXPECT_EQ(FileUserDefaults(file_).boolForKey("other"), true);
    }
    EXPECT_EQ(filesBeside(), 3U);
}

TEST_F(FileDefaults, ThatAreHugeAreLeftAlone) {
    write(R"({"flag": true})");
    constexpr std::uintmax_t size = std::uintmax_t{1} << 34;
    fs::resize_file(file_, size);
    FileUserDefaults defaults(file_);
    EXPECT_FALSE(defaults.boolForKey("flag"));
    defaults.setBool(true, "other");
    EXPECT_TRUE(defaults.boolForKey("other")) << "as long as the process runs";
    EXPECT_EQ(fs::file_size(file_), size);
    EXPECT_EQ(filesBeside(), 1U);
}

TEST(UserDefaultsFile, LiesBelowTheConfigurationFolder) {
    setenv("HOME", "/home/someone", 1);
    setenv("XDG_CONFIG_HOME", "/configuration", 1);
    EXPECT_EQ(userDefaultsFile(), "/configuration/velmo/defaults.json");
    setenv("XDG_CONFIG_HOME", "relative", 1);
    EXPECT_EQ(userDefaultsFile(), "/home/someone/.config/velmo/defaults.json") << "only absolute paths count";
    unsetenv("XDG_CONFIG_HOME");
    EXPECT_EQ(userDefaultsFile(), "/home/someone/.config/velmo/defaults.json");
    unsetenv("HOME");
    EXPECT_EQ(userDefaultsFile(), "");
}

}  // namespace

}  // namespace velmo
