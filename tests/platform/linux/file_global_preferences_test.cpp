#include "linux/defaults/file_global_preferences.h"

#include "system/menu_bar_spacing.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <cstdlib>
#include <fstream>

namespace velmo {

namespace {

namespace fs = std::filesystem;
using Value = GlobalPreferences::Value;

class FileGlobals : public testing::Test {
protected:
    void SetUp() override {
        std::string pattern = fs::temp_directory_path() / "velmo-globals-XXXXXX";
        folder_ = mkdtemp(pattern.data());
        file_ = folder_ / "velmo" / "global-here.json";
        fs::create_directories(file_.parent_path());
    }
    void TearDown() override { fs::remove_all(folder_); }

    void write(const std::string& content) const { std::ofstream(file_) << content; }
    static std::string read(const fs::path& file) {
        std::ifstream stream(file);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    fs::path folder_;
    fs::path file_;
};

TEST_F(FileGlobals, AreWrittenWhenSynchronized) {
    FileGlobalPreferences preferences(file_);
    preferences.setValue("spacing", 10);
    EXPECT_EQ(preferences.value("spacing"), Value(10.0)) << "at once for who has set it";
    EXPECT_FALSE(fs::exists(file_));
    preferences.synchronize();
    EXPECT_EQ(read(file_), "{\n  \"spacing\": 10\n}\n");
    EXPECT_EQ(FileGlobalPreferences(file_).value("spacing"), Value(10.0));

    preferences.setValue("spacing", std::nullopt);
    EXPECT_EQ(preferences.value("spacing"), std::nullopt);
    preferences.synchronize();
    EXPECT_EQ(read(file_), "{}\n");
}

TEST_F(FileGlobals, OnlyTheUserMayReadThem) {
    for (const mode_t mask : {0000, 0022, 0077}) {
        fs::remove_all(file_.parent_path());
        const auto former = umask(mask);
        FileGlobalPreferences preferences(file_);
        preferences.setValue("spacing", 10);
        preferences.synchronize();
        umask(former);
        EXPECT_EQ(fs::status(file_).permissions(), fs::perms::owner_read | fs::perms::owner_write) << mask;
        EXPECT_EQ(fs::status(file_.parent_path()).permissions(), fs::perms::owner_all) << mask;
    }
}

TEST_F(FileGlobals, NothingChangedIsNothingWritten) {
    FileGlobalPreferences preferences(file_);
    preferences.setValue("spacing", std::nullopt);
    preferences.synchronize();
    EXPECT_FALSE(fs::exists(file_));
    write("{\"spacing\":6}");
    preferences.setValue("spacing", 6);
    preferences.synchronize();
    EXPECT_EQ(read(file_), "{\"spacing\":6}");
}

TEST_F(FileGlobals, WhatOthersWriteIsSeenAndKept) {
    FileGlobalPreferences preferences(file_);
    EXPECT_EQ(preferences.value("spacing"), std::nullopt);
    write(R"({"spacing": 8, "other": {"deep": [1]}})");
    EXPECT_EQ(preferences.value("spacing"), Value(8.0));
    preferences.setValue("padding", 6);
    preferences.synchronize();
    EXPECT_EQ(preferences.value("spacing"), Value(8.0));
    EXPECT_NE(read(file_).find("deep"), std::string::npos);
}

TEST_F(FileGlobals, OnlyNumbersAreNumbers) {
    write(R"({"text": "6", "flag": true, "fraction": 6.5, "list": [6], "nothing": null})");
    const FileGlobalPreferences preferences(file_);
    EXPECT_EQ(preferences.value("text"), Value("6"));
    EXPECT_EQ(preferences.value("flag"), Value("true"));
    EXPECT_EQ(preferences.value("fraction"), Value(6.5));
    EXPECT_EQ(preferences.value("list"), Value("[6]"));
    EXPECT_EQ(preferences.value("nothing"), std::nullopt);
}

TEST_F(FileGlobals, DamagedFileIsSetAsideOnceItIsWrittenTo) {
    write("{\"spacing\": ");
    FileGlobalPreferences preferences(file_);
    EXPECT_EQ(preferences.value("spacing"), std::nullopt);
    EXPECT_EQ(read(file_), "{\"spacing\": ") << "who else writes it may not have finished";
    EXPECT_FALSE(fs::exists(file_.string() + ".damaged-1"));
    write("{\"spacing\": 8}");
    EXPECT_EQ(preferences.value("spacing"), Value(8.0));
    write("{\"spacing\": ");
    preferences.setValue("spacing", 6);
    preferences.synchronize();
    EXPECT_EQ(preferences.value("spacing"), Value(6.0));
    EXPECT_EQ(read(file_.string() + ".damaged-1"), "{\"spacing\": ");
}

TEST_F(FileGlobals, ChangeThatDidNotTakeIsGone) {
    fs::create_directories(file_ / "kept");
    FileGlobalPreferences preferences(file_);
    preferences.setValue("spacing", 6);
    EXPECT_EQ(preferences.value("spacing"), Value(6.0));
    preferences.synchronize();
    EXPECT_EQ(preferences.value("spacing"), std::nullopt);
    EXPECT_TRUE(fs::exists(file_ / "kept"));

    FileGlobalPreferences nowhere(fs::path{});
    nowhere.setValue("spacing", 6);
    nowhere.synchronize();
    EXPECT_EQ(nowhere.value("spacing"), std::nullopt);
}

TEST_F(FileGlobals, WhatIsWrittenForOtherHostsIsInvisible) {
    setenv("XDG_CONFIG_HOME", folder_.c_str(), 1);
    const std::string key = "NSStatusItemSpacing";
    const auto fileOf = [&](const std::string& host) {
        return FileGlobalPreferences(globalPreferencesFile(host));
    };
    const auto folder = folder_ / "velmo";
    std::ofstream(folder / "global.json") << "{\"" << key << "\": 6}";
    std::ofstream(folder / "global-there.json") << "{\"" << key << "\": 10}";
    EXPECT_EQ(MenuBarSpacing::currentPreset(fileOf("here")), MenuBarSpacing::Preset::system);
    EXPECT_EQ(MenuBarSpacing::currentPreset(fileOf("there")), MenuBarSpacing::Preset::compact);
    auto here = fileOf("here");
    MenuBarSpacing::apply(MenuBarSpacing::Preset::tight, here);
    EXPECT_EQ(MenuBarSpacing::currentPreset(fileOf("here")), MenuBarSpacing::Preset::tight);
    EXPECT_EQ(MenuBarSpacing::currentPreset(fileOf("there")), MenuBarSpacing::Preset::compact);
    EXPECT_EQ(read(folder / "global.json"), "{\"" + key + "\": 6}");
    unsetenv("XDG_CONFIG_HOME");
}

TEST(GlobalPreferencesFile, IsThatOfTheUserOnTheHost) {
    setenv("XDG_CONFIG_HOME", "/configuration", 1);
    EXPECT_EQ(globalPreferencesFile("desk-1.home"), "/configuration/velmo/global-desk-1.home.json");
    EXPECT_EQ(globalPreferencesFile("../a b/\xc3\xa4"), "/configuration/velmo/global-.._a_b___.json");
    EXPECT_EQ(globalPreferencesFile(""), "/configuration/velmo/global-localhost.json");
    unsetenv("XDG_CONFIG_HOME");
    unsetenv("HOME");
    EXPECT_EQ(globalPreferencesFile("here"), "");
    EXPECT_FALSE(hostName().empty());
}

}  // namespace

}  // namespace velmo
