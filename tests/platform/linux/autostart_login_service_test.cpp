#include "linux/login/autostart_login_service.h"

#include "fake_programs_test.h"

#include <sys/stat.h>

namespace velmo {

namespace {

namespace fs = std::filesystem;

using enum LoginServiceStatus;

const std::string group = "[Desktop Entry]\n";

class AutostartTest : public FakeProgramsTest {
protected:
    void SetUp() override {
        FakeProgramsTest::SetUp();
        install("velmo");
        useProgram(folder_ / "velmo");
    }

    void useProgram(const fs::path& program) {
        service_ = std::make_unique<AutostartLoginService>(
            AutostartLoginService::Environment{
                program, entry().parent_path(), {folder_ / "first", folder_ / "second"}},
            process_);
    }
    fs::path entry() const { return folder_ / "configuration" / "autostart" / "velmo.desktop"; }
    static void write(const fs::path& file, const std::string& content) {
        fs::create_directories(file.parent_path());
        std::ofstream(file) << content;
    }
    static std::string read(const fs::path& file) {
        std::ifstream stream(file);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    LoginServiceStatus statusOf(const std::string& content) {
        write(entry(), group + content);
        return service_->status();
    }
    DesktopEntry written() const { return DesktopEntry(read(entry())); }

    std::unique_ptr<AutostartLoginService> service_;
};

TEST_F(AutostartTest, IsOnFromRegistrationToItsEnd) {
    EXPECT_EQ(service_->status(), notRegistered);
    EXPECT_EQ(service_->unregisterService(), std::nullopt) << "nothing to do";
    EXPECT_EQ(service_->registerService(), std::nullopt);
    EXPECT_EQ(service_->status(), enabled);
    EXPECT_EQ(read(entry()),
              "[Desktop Entry]\nType=Application\nName=Velmo\n"
              "Comment=Keeps the menu bar tidy\nExec=" +
                  (folder_ / "velmo").string() + "\nTryExec=" + (folder_ / "velmo").string() + "\n");
    EXPECT_EQ(service_->registerService(), std::nullopt) << "once more";
    EXPECT_EQ(service_->status(), enabled);
    EXPECT_EQ(service_->unregisterService(), std::nullopt);
    EXPECT_EQ(service_->status(), notRegistered);
    EXPECT_TRUE(fs::is_empty(entry().parent_path())) << "nothing stays";
}

TEST_F(AutostartTest, OnlyTheUserMayWriteIt) {
    for (const mode_t mask : {0000, 0022, 0077}) {
        const auto former = umask(mask);
        EXPECT_EQ(service_->registerService(), std::nullopt);
        umask(former);
        EXPECT_EQ(fs::status(entry()).permissions(), fs::perms::owner_read | fs::perms::owner_write) << mask;
        for (const auto& folder : {entry().parent_path(), entry().parent_path().parent_path()})
            EXPECT_EQ(fs::status(folder).permissions(), fs::perms::owner_all) << folder << mask;
        fs::remove_all(entry().parent_path().parent_path());
    }
}

TEST_F(AutostartTest, ProgramMayLieAnywhere) {
    for (const char* name : {"my programs", "100%", "%f %U", "a\"b", "it's", "a\\b", "\\s", "$HOME", "`id`",
                             "a;b&c|d", " x ", "a\nb", "=", "#"}) {
        const auto program = folder_ / name / "velmo";
        fs::create_directories(program.parent_path());
        fs::copy_file(folder_ / "velmo", program);
        useProgram(program);
        EXPECT_EQ(service_->registerService(), std::nullopt) << name;
        EXPECT_EQ(service_->status(), enabled) << name;
        fs::remove(program);
        EXPECT_EQ(service_->status(), notFound) << name;
    }
}

TEST_F(AutostartTest, MissingProgramIsNotFound) {
    EXPECT_EQ(statusOf("Exec=velmo\n"), enabled) << "along the path";
    EXPECT_EQ(statusOf("Exec=velmo-2 --x\n"), notFound);
    EXPECT_EQ(statusOf("Exec=/nowhere/velmo\n"), notFound);
    EXPECT_EQ(statusOf("Exec=velmo\nTryExec=velmo\n"), enabled);
    EXPECT_EQ(statusOf("Exec=velmo\nTryExec=/nowhere/velmo\n"), notFound);
    EXPECT_EQ(statusOf("Exec=velmo\nTryExec=\n"), notFound);
    fs::permissions(folder_ / "velmo", fs::perms::owner_read);
    EXPECT_EQ(statusOf("Exec=velmo\n"), notFound) << "may not be run";
}

TEST_F(AutostartTest, EntryThatTheDesktopPassesOverRequiresApproval) {
    EXPECT_EQ(statusOf("Exec=velmo\nHidden=true\n"), requiresApproval);
    EXPECT_EQ(statusOf("Exec=velmo\nHidden=false\n"), enabled);
    EXPECT_EQ(statusOf("Exec=velmo\nX-GNOME-Autostart-enabled=false\n"), requiresApproval);
    EXPECT_EQ(statusOf("Exec=velmo\nX-GNOME-Autostart-enabled=true\n"), enabled);
    EXPECT_EQ(statusOf("Exec=velmo\nX-MATE-Autostart-enabled=false\n"), requiresApproval);
    EXPECT_EQ(statusOf("Hidden=true\n"), notRegistered) << "there only to hide another one";
    EXPECT_EQ(statusOf(""), notRegistered);
}

TEST_F(AutostartTest, EntryIsForSomeDesktops) {
    EXPECT_EQ(statusOf("Exec=velmo\nOnlyShowIn=GNOME;\n"), requiresApproval) << "no desktop at all";
    EXPECT_EQ(statusOf("Exec=velmo\nNotShowIn=GNOME;\n"), enabled);
    process_.values["XDG_CURRENT_DESKTOP"] = "Budgie:GNOME";
    EXPECT_EQ(statusOf("Exec=velmo\nOnlyShowIn=XFCE;GNOME\n"), enabled);
    EXPECT_EQ(statusOf("Exec=velmo\nOnlyShowIn=XFCE;KDE;\n"), requiresApproval);
    EXPECT_EQ(statusOf("Exec=velmo\nOnlyShowIn=\n"), requiresApproval);
    EXPECT_EQ(statusOf("Exec=velmo\nNotShowIn=KDE;GNOME;\n"), requiresApproval);
    EXPECT_EQ(statusOf("Exec=velmo\nNotShowIn=KDE;\n"), enabled);
    EXPECT_EQ(statusOf("Exec=velmo\nOnlyShowIn=Budgie;\nNotShowIn=GNOME;\n"), enabled)
        << "the closest name decides";
    EXPECT_EQ(statusOf("Exec=velmo\nOnlyShowIn=GNOME;\nNotShowIn=Budgie;\n"), requiresApproval);
}

TEST_F(AutostartTest, WhatTheUserAddedSurvives) {
    const std::string added =
        "# mine\n[Desktop Entry]\nName=Bar\nX-GNOME-Autostart-Delay=5\nExec=velmo --mine\n\n"
        "[Desktop Action Stop]\nExec=stop\n";
    write(entry(), added);
    EXPECT_EQ(service_->unregisterService(), std::nullopt);
    EXPECT_EQ(service_->status(), notRegistered);
    EXPECT_EQ(written().value("X-GNOME-Autostart-Delay"), "5");
    EXPECT_EQ(written().value("Name"), "Bar");
    EXPECT_NE(read(entry()).find("# mine"), std::string::npos);
    EXPECT_NE(read(entry()).find("[Desktop Action Stop]\nExec=stop\n"), std::string::npos);

    EXPECT_EQ(service_->registerService(), std::nullopt);
    EXPECT_EQ(service_->status(), enabled);
    EXPECT_EQ(written().value("X-GNOME-Autostart-Delay"), "5");
    EXPECT_EQ(written().value("Exec"), folder_ / "velmo");
}

TEST_F(AutostartTest, RegistrationSwitchesTheEntryBackOn) {
    write(entry(), group + "Exec=velmo --mine\nHidden=true\nX-GNOME-Autostart-enabled=false\n");
    EXPECT_EQ(service_->registerService(), std::nullopt);
    EXPECT_EQ(service_->status(), enabled);
    EXPECT_EQ(written().value("Exec"), "velmo --mine") << "runs this program already";
}

TEST_F(AutostartTest, RegistrationPointsAtThisProgram) {
    install("velmo-old");
    write(entry(), group + "Exec=velmo-old\nTryExec=velmo-old\n");
    EXPECT_EQ(service_->registerService(), std::nullopt);
    EXPECT_EQ(written().value("Exec"), folder_ / "velmo");
    EXPECT_EQ(written().value("TryExec"), folder_ / "velmo");
}

TEST_F(AutostartTest, EntryForOtherDesktopsStillRequiresApproval) {
    write(entry(), group + "Exec=velmo\nOnlyShowIn=KDE;\n");
    EXPECT_EQ(service_->registerService(), std::nullopt) << "no error";
    EXPECT_EQ(service_->status(), requiresApproval);
    EXPECT_EQ(written().value("OnlyShowIn"), "KDE;");
}

TEST_F(AutostartTest, EntryOfTheSystemCounts) {
    write(folder_ / "second" / "velmo.desktop", group + "Exec=velmo\n");
    EXPECT_EQ(service_->status(), enabled);
    EXPECT_EQ(service_->registerService(), std::nullopt);
    EXPECT_FALSE(fs::exists(entry())) << "nothing to do";
    write(folder_ / "first" / "velmo.desktop", group + "Exec=nowhere\n");
    EXPECT_EQ(service_->status(), notFound) << "the first folder is the more important one";
    fs::remove(folder_ / "first" / "velmo.desktop");

    EXPECT_EQ(service_->unregisterService(), std::nullopt);
    EXPECT_EQ(service_->status(), notRegistered);
    EXPECT_TRUE(written().isTrue("Hidden"));
    EXPECT_EQ(service_->unregisterService(), std::nullopt) << "once more";
    EXPECT_EQ(service_->status(), notRegistered);
    EXPECT_EQ(service_->registerService(), std::nullopt);
    EXPECT_EQ(service_->status(), enabled);
    EXPECT_EQ(read(folder_ / "second" / "velmo.desktop"), group + "Exec=velmo\n");
}

TEST_F(AutostartTest, FolderThatCannotBeWrittenIsSaidInTheSystemsWords) {
    write(entry().parent_path(), "a file in the folder's place");
    EXPECT_EQ(service_->registerService(), entry().string() + ": Not a directory");
    EXPECT_EQ(service_->status(), notRegistered);
    fs::remove(entry().parent_path());
    fs::create_directories(entry() / "kept");
    EXPECT_EQ(service_->registerService(), entry().string() + ": Is a directory");
    EXPECT_EQ(service_->unregisterService(), entry().string() + ": Is a directory");
    EXPECT_EQ(service_->status(), notRegistered);
    EXPECT_TRUE(fs::exists(entry() / "kept"));
}

TEST_F(AutostartTest, RefusedEndLeavesItOn) {
    write(folder_ / "first" / "velmo.desktop", group + "Exec=velmo\n");
    write(entry().parent_path(), "a file in the folder's place");
    EXPECT_EQ(service_->unregisterService(), entry().string() + ": Not a directory");
    EXPECT_EQ(service_->status(), enabled);
}

TEST_F(AutostartTest, MissingProgramCannotBeRegistered) {
    useProgram("/nowhere/velmo");
    EXPECT_EQ(service_->registerService(), "/nowhere/velmo: No such file or directory");
    EXPECT_EQ(service_->status(), notRegistered);
    EXPECT_FALSE(fs::exists(entry()));
}

TEST_F(AutostartTest, UserWithoutAFolderIsToldSo) {
    const AutostartLoginService::Environment nowhere{folder_ / "velmo", {}, {folder_ / "first"}};
    AutostartLoginService service(nowhere, process_);
    EXPECT_EQ(service.status(), notRegistered);
    EXPECT_EQ(service.registerService(), "No such file or directory");
    write(folder_ / "first" / "velmo.desktop", group + "Exec=velmo\n");
    EXPECT_EQ(service.unregisterService(), "No such file or directory");
    EXPECT_EQ(service.status(), enabled);
}

TEST_F(AutostartTest, MaskOfALinkToNothingGivesWay) {
    fs::create_directories(entry().parent_path());
    fs::create_symlink("/dev/null", entry());
    write(folder_ / "first" / "velmo.desktop", group + "Exec=velmo\n");
    EXPECT_EQ(service_->status(), notRegistered);
    EXPECT_EQ(service_->registerService(), std::nullopt);
    EXPECT_EQ(service_->status(), enabled);
    EXPECT_FALSE(fs::is_symlink(entry()));
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
}

TEST_F(AutostartTest, PipeInTheEntrysPlaceBlocksNothing) {
    fs::create_directories(entry().parent_path());
    ASSERT_EQ(mkfifo(entry().c_str(), S_IRWXU), 0);
    EXPECT_EQ(service_->status(), notRegistered);
    EXPECT_EQ(service_->registerService(), entry().string() + ": Operation not permitted");
    EXPECT_EQ(service_->unregisterService(), std::nullopt);
    EXPECT_FALSE(fs::exists(entry()));
}

TEST_F(AutostartTest, WhatIsHugeIsLeftAlone) {
    write(entry(), group + "Exec=" + (folder_ / "velmo").string() + "\n");
    ASSERT_EQ(service_->status(), enabled);
    constexpr std::uintmax_t huge = (1 << 20) + 1;
    fs::resize_file(entry(), huge - 1);
    ASSERT_EQ(service_->status(), enabled);
    fs::resize_file(entry(), huge);
    EXPECT_EQ(service_->status(), notRegistered);
    EXPECT_EQ(service_->registerService(), entry().string() + ": File too large");
    EXPECT_EQ(service_->unregisterService(), entry().string() + ": File too large");
    EXPECT_EQ(fs::file_size(entry()), huge);
}

TEST(AutostartEnvironment, IsThatOfThisProgramAndUser) {
    setenv("XDG_CONFIG_HOME", "/configuration", 1);
    setenv("XDG_CONFIG_DIRS", "/etc/one:relative::/etc/two", 1);
    const auto environment = autostartEnvironment();
    EXPECT_EQ(environment.program.filename(), "linux_tests");
    EXPECT_EQ(environment.userFolder, "/configuration/autostart");
    EXPECT_EQ(environment.systemFolders, (std::vector<fs::path>{"/etc/one/autostart", "/etc/two/autostart"}));
    unsetenv("XDG_CONFIG_DIRS");
    EXPECT_EQ(autostartEnvironment().systemFolders, std::vector<fs::path>{"/etc/xdg/autostart"});
    unsetenv("XDG_CONFIG_HOME");
    unsetenv("HOME");
    EXPECT_EQ(autostartEnvironment().userFolder, "");
}

}  // namespace

}  // namespace velmo
