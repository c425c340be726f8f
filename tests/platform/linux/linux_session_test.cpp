#include "linux/session/linux_session.h"

#include "child_process.h"
#include "fake_programs_test.h"
#include "linux/event_loop/event_loop.h"
#include "private_bus.h"

#include <functional>
#include <iterator>
#include <memory>
#include <optional>
#include <utility>

namespace velmo {

namespace {

class LinuxSessionTest : public FakeProgramsTest {
protected:
    void logOutOf(const std::string& desktop) {
        process_.values["XDG_CURRENT_DESKTOP"] = desktop;
        session_.requestLogOut();
    }

    std::vector<Confirmation> questions_;
    std::function<void()> confirm_;
    std::shared_ptr<dbus::Bus> bus_;
    LinuxSession session_{process_, [this] { return bus_; },
                          [this](const auto& confirmation, const auto& action) {
                              questions_.push_back(confirmation);
                              confirm_ = action;
                          }};
};

TEST_F(LinuxSessionTest, HasTheSessionManagerOfTheDesktopAsk) {
    for (const auto* name : {"gnome-session-quit", "xfce4-session-logout", "lxqt-leave", "mate-session-save",
                             "cinnamon-session-quit", "loginctl"})
        install(name);
    const std::vector<std::pair<const char*, Words>> expected = {
        {"GNOME", {"gnome-session-quit", "--logout"}},
        {"ubuntu:GNOME", {"gnome-session-quit", "--logout"}},
        {"XFCE", {"xfce4-session-logout"}},
        {"LXQt", {"lxqt-leave"}},
        {"lxqt", {"lxqt-leave"}},
        {"MATE", {"mate-session-save", "--logout-dialog"}},
        {"X-Cinnamon", {"cinnamon-session-quit", "--logout"}},
    };
    for (const auto& [desktop, words] : expected) {
        logOutOf(desktop);
        EXPECT_EQ(started(), words) << desktop;
    }
    EXPECT_TRUE(questions_.empty()) << "nobody is asked twice";
}

TEST_F(LinuxSessionTest, AsksItselfWhereNoSessionManagerDoes) {
    install("loginctl");
    process_.values["XDG_SESSION_ID"] = "c2";
    logOutOf("i3");
    ASSERT_EQ(questions_.size(), 1U);
    EXPECT_EQ(questions_.front().question, "Log out now?");
    EXPECT_EQ(questions_.front().action, "Log Out");
    EXPECT_EQ(startedAtAll(), Words{}) << "not before the answer";
    confirm_();
    EXPECT_EQ(started(), (Words{"loginctl", "terminate-session", "c2"}));
}

TEST_F(LinuxSessionTest, AsksItselfWhereTheDesktopsOwnProgramIsMissing) {
    install("loginctl");
    install("gnome-session-quit");
    logOutOf("XFCE");
    EXPECT_EQ(questions_.size(), 1U);
    EXPECT_EQ(startedAtAll(), Words{}) << "least of all another desktop's";
}

TEST_F(LinuxSessionTest, EndsTheUsersSessionWhereTheProcessHasNoneOfItsOwn) {
    install("loginctl");
    session_.requestLogOut();
    ASSERT_EQ(questions_.size(), 1U);
    confirm_();
    EXPECT_EQ(started(), (Words{"loginctl", "terminate-session", "auto"}));
}

TEST_F(LinuxSessionTest, AsksNothingWhereNothingCouldFollow) {
    logOutOf("i3");
    EXPECT_TRUE(questions_.empty());
    EXPECT_EQ(startedAtAll(), Words{});
}

/// A session of Plasma, which is asked on the bus. A test says who answers there.
class PlasmaSession : public LinuxSessionTest {
protected:
    void SetUp() override {
        LinuxSessionTest::SetUp();
        install("loginctl");
        privateBus_ = std::make_unique<desktop::PrivateBus>(folder_);
    }
    void startBus() {
        privateBus_->start();
        bool isMalformed = false;
        bus_ = dbus::Bus::open(
            loop_, privateBus_->address(), [] {}, isMalformed);
        ASSERT_TRUE(bus_);
    }
    void TearDown() override {
        prompt_.reset();
        bus_.reset();
        privateBus_.reset();
        LinuxSessionTest::TearDown();
    }
    /// How a program is started that calls itself what the question comes from, and answers as told.
    std::vector<std::string> promptThat(const std::string& answer) const {
        const auto program = folder_ / "prompt.py";
        std::ofstream(program) << R"(import sys
from gi.repository import Gio, GLib
xml = "<node><interface name='org.kde.LogoutPrompt'><method name='promptLogout'/></interface></node>"
def note(text):
    with open(sys.argv[3], "a") as file:
        file.write(text + "\n")
def called(connection, sender, path, interface, method, arguments, invocation):
    note(path + " " + method)
    if sys.argv[1] == "agrees":
        invocation.return_value(None)
    elif sys.argv[1] == "refuses":
        invocation.return_dbus_error("org.kde.Error", "no")
flags = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
bus = Gio.DBusConnection.new_for_address_sync(sys.argv[2], flags, None, None)
bus.register_object("/LogoutPrompt", Gio.DBusNodeInfo.new_for_xml(xml).interfaces[0], called)
Gio.bus_own_name_on_connection(bus, "org.kde.LogoutPrompt", 0, lambda *_: note("ready"), None)
GLib.MainLoop().run()
)";
        return {"/usr/bin/python3", program, answer, privateBus_->address(), asked()};
    }
    void startPromptThat(const std::string& answer) {
        prompt_.emplace(promptThat(answer), desktop::Environment{});
        ASSERT_TRUE(until([&] { return textOf(asked()) == "ready\n"; }));
    }
    /// From now on the bus starts it when it is called.
    void installPromptThat(const std::string& answer) const {
        const auto services = folder_ / "services";
        std::filesystem::create_directory(services);
        std::ofstream service(services / "org.kde.LogoutPrompt.service");
        service << "[D-BUS Service]\nName=org.kde.LogoutPrompt\nExec=";
        for (const auto& word : promptThat(answer))
            service << word << ' ';
        service << '\n';
    }
    bool until(const std::function<bool()>& condition, Seconds limit = 8) {
        bool isOver = false;
        loop_.schedule(limit, [&] { isOver = true; });
        while (!isOver && !condition()) {
            loop_.turn();
            loop_.prepareToSleep();
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        }
        return condition();
    }
    std::filesystem::path asked() const { return folder_ / "asked"; }
    static std::string textOf(const std::filesystem::path& file) {
        std::ifstream stream(file);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    EventLoop loop_;
    std::unique_ptr<desktop::PrivateBus> privateBus_;
    std::optional<desktop::ChildProcess> prompt_;
};

TEST_F(PlasmaSession, AsksByAProgramThatTheBusStarts) {
    installPromptThat("agrees");
    startBus();
    logOutOf("KDE");
    EXPECT_TRUE(until([&] { return textOf(asked()).ends_with("/LogoutPrompt promptLogout\n"); }));
    EXPECT_FALSE(until([&] { return !questions_.empty(); }, 0.3)) << "nobody is asked twice";
}

TEST_F(PlasmaSession, MayTakeItsTime) {
    startBus();
    startPromptThat("says-nothing");
    logOutOf("KDE");
    EXPECT_FALSE(until([&] { return !questions_.empty(); }, 0.5));
    EXPECT_EQ(textOf(asked()), "ready\n/LogoutPrompt promptLogout\n");
}

TEST_F(PlasmaSession, LeavesTheQuestionToUsWhereItCannotAsk) {
    startBus();
    logOutOf("KDE");
    EXPECT_TRUE(questions_.empty()) << "not before the bus has answered";
    EXPECT_TRUE(until([&] { return questions_.size() == 1; })) << "nobody is there";
    startPromptThat("refuses");
    logOutOf("KDE");
    EXPECT_TRUE(until([&] { return questions_.size() == 2; }));
    bus_.reset();
    logOutOf("KDE");
    EXPECT_EQ(questions_.size(), 3U) << "there is no bus";
    confirm_();
    EXPECT_EQ(started(), (Words{"loginctl", "terminate-session", "auto"}));
}

}  // namespace

}  // namespace velmo
