#include "linux/workspace/linux_workspace.h"

#include "fake_programs_test.h"
#include "linux/workspace/address.h"
#include "linux/workspace/settings_programs.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <fstream>
#include <map>
#include <sstream>

namespace velmo {

namespace {

const std::string clockSettings = "x-apple.systempreferences:com.apple.ControlCenter-Settings.extension";
const std::string pictureSettings =
    "x-apple.systempreferences:com.apple.preference.security?Privacy_ScreenCapture";

class WorkspaceTest : public FakeProgramsTest {
protected:
    void openOn(const std::string& desktop, const std::string& address) {
        process_.values["XDG_CURRENT_DESKTOP"] = desktop;
        workspace_.open(address);
    }

    LinuxWorkspace workspace_{process_};
};

TEST_F(WorkspaceTest, OpensTheSettingsOfTheRunningDesktop) {
    for (const auto* name :
         {"gnome-control-center", "systemsettings", "xfce4-settings-manager", "lxqt-config",
          "mate-control-center", "cinnamon-settings", "budgie-control-center"})
        install(name);
    const std::map<std::string, std::pair<Words, Words>> expected = {
        {"GNOME", {{"gnome-control-center", "datetime"}, {"gnome-control-center", "privacy"}}},
        {"ubuntu:GNOME", {{"gnome-control-center", "datetime"}, {"gnome-control-center", "privacy"}}},
        {"Budgie:GNOME", {{"budgie-control-center", "datetime"}, {"budgie-control-center", "privacy"}}},
        {"KDE", {{"systemsettings", "kcm_clock"}, {"systemsettings"}}},
        {"XFCE", {{"xfce4-settings-manager"}, {"xfce4-settings-manager"}}},
        {"LXQt", {{"lxqt-config"}, {"lxqt-config"}}},
        {"MATE", {{"mate-control-center"}, {"mate-control-center"}}},
        {"X-Cinnamon", {{"cinnamon-settings", "calendar"}, {"cinnamon-settings", "privacy"}}},
    };
    for (const auto& [desktop, commands] : expected) {
        openOn(desktop, clockSettings);
        EXPECT_EQ(started(), commands.first) << desktop;
        openOn(desktop, pictureSettings);
        EXPECT_EQ(started(), commands.second) << desktop;
    }
}

TEST_F(WorkspaceTest, PrefersTheProgramForTheWantedSettings) {
    install("xfce4-settings-manager");
    install("xfce4-time-settings");
    openOn("XFCE", clockSettings);
    EXPECT_EQ(started(), Words{"xfce4-time-settings"});
    install("kcmshell5");
    openOn("KDE", clockSettings);
    EXPECT_EQ(started(), (Words{"kcmshell5", "kcm_clock"})) << "where nothing better is installed";
}

TEST_F(WorkspaceTest, DoesNothingWhereTheDesktopHasNoSettings) {
    for (const auto* name : {"gnome-control-center", "xdg-open"})
        install(name);
    for (const auto* desktop : {"", "openbox", "KDE", "GNOMELIKE"}) {
        openOn(desktop, clockSettings);
        EXPECT_EQ(startedAtAll(), Words{}) << desktop;
    }
    process_.values.erase("XDG_CURRENT_DESKTOP");
    workspace_.open(clockSettings);
    EXPECT_EQ(startedAtAll(), Words{});
}

TEST_F(WorkspaceTest, HandsOtherAddressesToTheDesktop) {
    install("xdg-open");
    workspace_.open("https://example.org/a?b=c&d=%20#e");
    EXPECT_EQ(started(), (Words{"xdg-open", "https://example.org/a?b=c&d=%20#e"}));
    for (const auto* address :
         {"", "http", "http:", "http://", "http:///a", "https:example.org", "://a", "-a:b", "1a:b",
          "http://a b", "http://a\n", "http://\xc3\xa4", "http://a/%2", "ht_tp://a"}) {
        workspace_.open(address);
        EXPECT_FALSE(parseAddress(address)) << address;
    }
    EXPECT_EQ(startedAtAll(), Words{});
}

TEST_F(WorkspaceTest, DoesNothingWithoutAProgram) {
    workspace_.open("https://example.org/");
    std::filesystem::create_directory(folder_ / "xdg-open");
    workspace_.open("https://example.org/");
    std::filesystem::remove(folder_ / "xdg-open");
    std::ofstream(folder_ / "xdg-open") << "not executable";
    workspace_.open("https://example.org/");
    EXPECT_EQ(startedAtAll(), Words{});
}

TEST_F(WorkspaceTest, StartsProgramsThatGoOnWithoutUs) {
    install("xdg-open", "readlink /proc/self/fd/* > " + (folder_ / "fds").string() +
                            " 2>/dev/null\ngrep -E 'Sig(Blk|Ign)' /proc/self/status > " +
                            (folder_ / "signals").string() + "\ncut -d' ' -f6 /proc/$$/stat > " +
                            (folder_ / "session").string() + "\n");
    const int descriptor = open((folder_ / "secret").c_str(), O_RDWR | O_CREAT, 0600);
    sigset_t blocked;
    sigset_t former;
    sigemptyset(&blocked);
    sigaddset(&blocked, SIGTERM);
    sigprocmask(SIG_BLOCK, &blocked, &former);
    const auto formerPipe = signal(SIGPIPE, SIG_IGN);
    workspace_.open("https://example.org/");
    signal(SIGPIPE, formerPipe);
    sigprocmask(SIG_SETMASK, &former, nullptr);
    close(descriptor);

    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "nobody to wait for";
    EXPECT_EQ(errno, ECHILD);
    ASSERT_EQ(started().size(), 2U);
    const auto content = [&](const char* name) {
        std::ifstream file(folder_ / name);
        std::ostringstream text;
        text << file.rdbuf();
        return text.str();
    };
    EXPECT_EQ(content("fds").find("secret"), std::string::npos);
    EXPECT_NE(content("fds").find("/dev/null"), std::string::npos);
    EXPECT_NE(content("signals").find("SigBlk:\t0000000000000000"), std::string::npos);
    EXPECT_NE(content("signals").find("SigIgn:\t0000000000000000"), std::string::npos);
    EXPECT_NE(std::stoi(content("session")), getsid(0));
}

TEST(AddressTest, HasItsParts) {
    EXPECT_EQ(
        parseAddress(pictureSettings),
        (Address{"x-apple.systempreferences", "com.apple.preference.security", "Privacy_ScreenCapture"}));
    EXPECT_EQ(parseAddress(clockSettings),
              (Address{"x-apple.systempreferences", "com.apple.ControlCenter-Settings.extension", ""}));
    EXPECT_EQ(parseAddress("HTTPS://a?b?c"), (Address{"https", "//a", "b?c"}));
    EXPECT_TRUE(parseAddress("a:" + std::string(8190, 'b')));
    EXPECT_FALSE(parseAddress("a:" + std::string(8191, 'b')));
}

TEST(SettingsCommands, BestComesFirst) {
    using Commands = std::vector<Words>;
    EXPECT_EQ(settingsCommands("XFCE", SettingsPane::dateAndTime),
              (Commands{{"xfce4-time-settings"}, {"xfce4-settings-manager"}}));
    EXPECT_EQ(settingsCommands("xfce", SettingsPane::overview), (Commands{{"xfce4-settings-manager"}}));
    EXPECT_EQ(settingsCommands("Unknown", SettingsPane::overview), Commands{});
}

}  // namespace

}  // namespace velmo
