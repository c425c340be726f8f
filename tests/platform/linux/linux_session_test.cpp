#include "linux/session/linux_session.h"

#include "fake_programs_test.h"

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
    LinuxSession session_{process_, [this](const auto& confirmation, const auto& action) {
                              questions_.push_back(confirmation);
                              confirm_ = action;
                          }};
};

TEST_F(LinuxSessionTest, HasTheSessionManagerOfTheDesktopAsk) {
    for (const auto* name : {"gnome-session-quit", "dbus-send", "busctl", "xfce4-session-logout",
                             "lxqt-leave", "mate-session-save", "cinnamon-session-quit", "loginctl"})
        install(name);
    const Words logoutOfPlasma = {"dbus-send",          "--session",
                                  "--type=method_call", "--dest=org.kde.LogoutPrompt",
                                  "/LogoutPrompt",      "org.kde.LogoutPrompt.promptLogout"};
    const std::vector<std::pair<const char*, Words>> expected = {
        {"GNOME", {"gnome-session-quit", "--logout"}},
        {"ubuntu:GNOME", {"gnome-session-quit", "--logout"}},
        {"KDE", logoutOfPlasma},
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

TEST_F(LinuxSessionTest, SpeaksToPlasmaWithWhatIsThere) {
    install("busctl");
    logOutOf("KDE");
    EXPECT_EQ(started(), (Words{"busctl", "--user", "call", "org.kde.LogoutPrompt", "/LogoutPrompt",
                                "org.kde.LogoutPrompt", "promptLogout"}));
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

}  // namespace

}  // namespace velmo
