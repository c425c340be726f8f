#include "built_files.h"
#include "settings_session.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <fstream>

namespace velmo::desktop {

namespace {

/// How a command has ended, and what it wrote.
struct Ending {
    std::optional<int> status;
    std::string output;
    std::string errors;
};

class Commands : public SettingsSession {
protected:
    void SetUp() override {
        SettingsSession::SetUp();
        writeDefaults({{"autoRehide", false}, {"hideOnClickOutside", false}});
    }

    Ending command(const std::vector<std::string>& words) const {
        const auto read = [](const std::filesystem::path& file) {
            std::ifstream stream(file);
            return std::string(std::istreambuf_iterator<char>(stream), {});
        };
        std::vector<std::string> line = {"/bin/sh", "-c", "exec \"$@\" >\"$HOME/command.out\"", "sh",
                                         velmoProgram};
        line.insert(line.end(), words.begin(), words.end());
        auto process = run(line, home_ / "command.err");
        const auto status = process.wait(milliseconds(9000));
        return {status, read(home_ / "command.out"), read(home_ / "command.err")};
    }

    void expectDone(const std::string& word) const {
        const auto ending = command({word});
        EXPECT_EQ(ending.status, 0) << word;
        EXPECT_EQ(ending.output + ending.errors, "") << word;
    }

    void expectFailure(const std::vector<std::string>& words, int status, const std::string& errors) const {
        const auto ending = command(words);
        EXPECT_EQ(ending.status, status);
        EXPECT_EQ(ending.output, "");
        EXPECT_EQ(ending.errors, errors);
    }

    /// What any client of the display can send to the instance.
    void sendMessage(const std::string& type, std::uint8_t format, std::uint32_t number) const {
        const auto window = x().selectionOwner("_VELMO_INSTANCE_S0");
        ASSERT_NE(window, XCB_WINDOW_NONE);
        xcb_client_message_event_t message{};
        message.response_type = XCB_CLIENT_MESSAGE;
        message.format = format;
        message.window = window;
        message.type = x().atom(type);
        message.data.data32[0] = number;
        xcb_send_event(x().raw(), 0, window, 0, reinterpret_cast<const char*>(&message));
        xcb_flush(x().raw());
    }
};

const std::string noneRuns = "velmo: no Velmo runs on this display\n";
constexpr std::uint32_t quitNumber = 5;

TEST_F(Commands, ToggleRevealsTheIconsAndHidesThemAgain) {
    startVelmo();
    const auto icon = startTrayProgram("gxkb", "Gxkb");
    superDrag(icon, farLeft);
    ASSERT_TRUE(eventually([&] { return isHidden(icon); }));
    EXPECT_TRUE(stays([&] { return isHidden(icon); }, milliseconds(300)));
    expectDone("toggle");
    EXPECT_TRUE(eventually([&] { return isOnScreen(icon); }));
    expectDone("toggle");
    EXPECT_TRUE(eventually([&] { return isHidden(icon); }));
}

TEST_F(Commands, ToggleAllRevealsWhatIsAlwaysHidden) {
    writeDefaults({{"autoRehide", false},
                   {"hideOnClickOutside", false},
                   {"alwaysHiddenEnabled", true},
                   {"statusItemOrder", {"Velmo.Toggle", "Velmo.Divider", "Velmo.AlwaysHiddenDivider"}}});
    startVelmo();
    const auto icon = startTrayProgram("gxkb", "Gxkb");
    superDrag(icon, farLeft);
    ASSERT_TRUE(eventually([&] { return isHidden(icon); }));
    expectDone("toggle-all");
    EXPECT_TRUE(eventually([&] { return isOnScreen(icon) && isOnScreen(alwaysHiddenDivider()); }));
    expectDone("toggle-all");
    EXPECT_TRUE(eventually([&] { return isHidden(icon); }));
}

TEST_F(Commands, PanelOpensAndCloses) {
    startWindowManager();
    startVelmo();
    const auto icon = startTrayProgram("gxkb", "Gxkb");
    superDrag(icon, farLeft);
    ASSERT_TRUE(eventually([&] { return isHidden(icon); }));
    EXPECT_FALSE(panel());
    expectDone("panel");
    EXPECT_TRUE(eventually([&] { return panel() && isHidden(icon); }));
    expectDone("panel");
    EXPECT_TRUE(eventually([&] { return !panel(); }));
}

TEST_F(Commands, SettingsOpen) {
    startWindowManager();
    startVelmo();
    EXPECT_TRUE(stays([&] { return !settingsWindow(); }, milliseconds(300)));
    expectDone("settings");
    EXPECT_TRUE(eventually([&] { return settingsWindow().has_value(); }));
}

TEST_F(Commands, AfterQuitTheDisplayIsFreeForTheNextStart) {
    for (int round = 0; round < 5; ++round) {
        startVelmo();
        expectDone("quit");
        EXPECT_EQ(x().selectionOwner("_VELMO_INSTANCE_S0"), XCB_WINDOW_NONE);
        EXPECT_EQ(x().selectionOwner("_NET_SYSTEM_TRAY_S0"), XCB_WINDOW_NONE);
        EXPECT_FALSE(x().windowTitled("Velmo.Toggle"));
        EXPECT_EQ(velmo().wait(milliseconds(3000)), 0);
    }
}

TEST_F(Commands, QuitEndsAlsoWhileTheSettingsAreOpen) {
    startWindowManager();
    startVelmo();
    openSettings();
    expectDone("quit");
    EXPECT_EQ(velmo().wait(milliseconds(3000)), 0);
}

TEST_F(Commands, QuitGivesUpOnAnInstanceThatHangs) {
    startVelmo();
    velmo().signal(SIGSTOP);
    const auto begin = std::chrono::steady_clock::now();
    expectFailure({"quit"}, 1, "velmo: the Velmo that runs on this display has not ended within 5 seconds\n");
    EXPECT_GE(std::chrono::steady_clock::now() - begin, milliseconds(4900));
    velmo().signal(SIGCONT);
    EXPECT_EQ(velmo().wait(milliseconds(5000)), 0) << "it ends once it can";
}

TEST_F(Commands, OthersDoNotWaitForAnInstanceThatHangs) {
    startVelmo();
    velmo().signal(SIGSTOP);
    const auto begin = std::chrono::steady_clock::now();
    expectDone("toggle");
    EXPECT_LT(std::chrono::steady_clock::now() - begin, milliseconds(4000));
    EXPECT_TRUE(dividerIsExpanded());
    velmo().signal(SIGCONT);
    EXPECT_TRUE(eventually([&] { return !dividerIsExpanded(); }));
}

TEST_F(Commands, WhereNoneRunsSayThatAndStartNothing) {
    for (const std::string word : {"toggle", "toggle-all", "panel", "settings", "quit"})
        expectFailure({word}, 1, noneRuns);
    EXPECT_FALSE(x().windowTitled("Velmo.Toggle"));
    startVelmo();
    velmo().signal(SIGKILL);
    velmo().wait(milliseconds(3000));
    expectFailure({"toggle"}, 1, noneRuns);
}

TEST_F(Commands, WithoutADisplaySaySo) {
    environment_["DISPLAY"] = "";
    for (const std::string word : {"toggle", "quit"})
        expectFailure({word}, 1, "velmo: cannot reach an X display (DISPLAY is unset or names none)\n");
}

TEST_F(Commands, MistakesAreToldAndChangeNothing) {
    startVelmo();
    expectFailure({"tog\ngle"}, 2,
                  "velmo: unknown command \"tog?gle\"; \"velmo --help\" lists what it understands\n");
    expectFailure({"toggle", "toggle"}, 2,
                  "velmo: it takes one word, not 2; \"velmo --help\" lists what it understands\n");
    EXPECT_TRUE(stays([&] { return dividerIsExpanded() && !settingsWindow(); }, milliseconds(500)));
}

TEST_F(Commands, HelpAndVersionNeedNoDisplay) {
    environment_["DISPLAY"] = "";
    const auto help = command({"--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_EQ(help.output.substr(0, 23), "Usage: velmo [COMMAND]\n");
    const auto version = command({"--version"});
    EXPECT_EQ(version.status, 0);
    EXPECT_EQ(version.output, "velmo " VELMO_VERSION "\n");
    EXPECT_EQ(help.errors + version.errors, "");
}

TEST_F(Commands, AnOutputThatIsFullIsAFailure) {
    auto process = run({"/bin/sh", "-c", "exec \"$0\" --help >/dev/full", velmoProgram});
    EXPECT_EQ(process.wait(milliseconds(5000)), 1);
}

TEST_F(Commands, MessagesThatAreNoneChangeNothing) {
    startVelmo();
    for (const std::uint32_t number : {0U, quitNumber + 1, 0x80000000U, 0xffffffffU, 0x100U + quitNumber})
        sendMessage("_VELMO_COMMAND", 32, number);
    for (const std::uint8_t format : {8, 16})
        sendMessage("_VELMO_COMMAND", format, quitNumber);
    sendMessage("_VELMO_ITEM", 32, quitNumber);
    const auto isAsBefore = [&] {
        return velmo().wait(milliseconds(0)) == std::nullopt && dividerIsExpanded() && !settingsWindow() &&
               !panel();
    };
    EXPECT_TRUE(stays(isAsBefore, milliseconds(500)));
    // The same with the right number and format.
    sendMessage("_VELMO_COMMAND", 32, quitNumber);
    EXPECT_EQ(velmo().wait(milliseconds(5000)), 0);
}

TEST_F(Commands, LoadNoPartOfTheProgramAndReachNoBus) {
    startVelmo();
    // Nobody may call this bus.
    const int bus = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const auto path = (home_ / "idle-bus").string();
    ASSERT_LT(path.size(), sizeof(address.sun_path));
    path.copy(address.sun_path, path.size());
    ASSERT_EQ(bind(bus, reinterpret_cast<const sockaddr*>(&address), sizeof(address)), 0);
    ASSERT_EQ(listen(bus, 1), 0);
    environment_["DBUS_SESSION_BUS_ADDRESS"] = "unix:path=" + path;
    const auto files =
        outputOf({"/bin/sh", "-c", "LD_DEBUG=files \"$0\" toggle 2>&1", velmoProgram}, environment_);
    EXPECT_TRUE(eventually([&] { return !dividerIsExpanded(); }));
    EXPECT_NE(files.find("libxcb.so"), std::string::npos) << files.substr(0, 500);
    EXPECT_EQ(files.find("libQt6"), std::string::npos);
    EXPECT_EQ(files.find("velmo-"), std::string::npos);
    EXPECT_EQ(accept(bus, nullptr, nullptr), -1);
    EXPECT_EQ(errno, EAGAIN);
    close(bus);
}

}  // namespace

}  // namespace velmo::desktop
