#include "built_files.h"
#include "desktop_session.h"

#include <xcb/xfixes.h>
#include <algorithm>
#include <cstdlib>
#include <fstream>

namespace velmo::desktop {

namespace {

class Start : public DesktopSession {
protected:
    /// Runs Velmo to its end; its exit status and what it wrote to standard error.
    std::pair<std::optional<int>, std::string> runToEnd() {
        const auto errors = home_ / "start.err";
        auto process = run({velmoProgram}, errors);
        const auto status = process.wait(milliseconds(5000));
        std::ifstream stream(errors);
        return {status, std::string(std::istreambuf_iterator<char>(stream), {})};
    }

    static bool isOneLine(const std::string& text) {
        return std::count(text.begin(), text.end(), '\n') == 1 && text.ends_with('\n');
    }
};

TEST_F(Start, WithoutADisplaySaysSoInOneLineAndFails) {
    environment_["DISPLAY"] = "";
    const auto [status, errors] = runToEnd();
    EXPECT_EQ(status, 1);
    EXPECT_TRUE(isOneLine(errors)) << errors;
    EXPECT_NE(errors.find("display"), std::string::npos) << errors;
}

TEST_F(Start, WhereAnotherTrayRunsSaysSoInOneLineAndFails) {
    startServer();
    const auto tray = run({"trayer"});
    ASSERT_TRUE(eventually([&] { return x().selectionOwner("_NET_SYSTEM_TRAY_S0") != XCB_WINDOW_NONE; }));
    const auto owner = x().selectionOwner("_NET_SYSTEM_TRAY_S0");
    const auto [status, errors] = runToEnd();
    EXPECT_EQ(status, 1);
    EXPECT_TRUE(isOneLine(errors)) << errors;
    EXPECT_NE(errors.find("tray"), std::string::npos) << errors;
    EXPECT_EQ(x().selectionOwner("_NET_SYSTEM_TRAY_S0"), owner) << "the other tray keeps its part";
    EXPECT_FALSE(x().windowTitled("Velmo.Toggle"));
}

TEST_F(Start, WhereAnotherTrayRunsNoCommandIsTakenAndLost) {
    startServer();
    const auto tray = run({"trayer"});
    ASSERT_TRUE(eventually([&] { return x().selectionOwner("_NET_SYSTEM_TRAY_S0") != XCB_WINDOW_NONE; }));
    const auto* extension = xcb_get_extension_data(x().raw(), &xcb_xfixes_id);
    free(xcb_xfixes_query_version_reply(x().raw(), xcb_xfixes_query_version(x().raw(), 5, 0), nullptr));
    xcb_xfixes_select_selection_input(x().raw(), x().root(), x().atom("_VELMO_INSTANCE_S0"),
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER);
    // The server knows what we ask for by the time of this answer.
    ASSERT_EQ(x().selectionOwner("_VELMO_INSTANCE_S0"), XCB_WINDOW_NONE);
    EXPECT_EQ(runToEnd().first, 1);
    // Whatever was told of came before this answer.
    EXPECT_EQ(x().selectionOwner("_VELMO_INSTANCE_S0"), XCB_WINDOW_NONE);
    while (auto* event = xcb_poll_for_event(x().raw())) {
        EXPECT_NE(event->response_type & 0x7f, extension->first_event + XCB_XFIXES_SELECTION_NOTIFY)
            << "it has taken the part of the running instance for a moment";
        free(event);
    }
}

TEST_F(Start, SecondStartLeavesTheFirstAloneAndSucceeds) {
    startServer();
    startVelmo();
    const auto first = toggle();
    const auto [status, errors] = runToEnd();
    EXPECT_EQ(status, 0);
    EXPECT_EQ(errors, "");
    EXPECT_EQ(toggle(), first);
    EXPECT_EQ(velmo().wait(milliseconds(200)), std::nullopt) << "the first one still runs";
}

TEST_F(Start, SecondStartAsksTheFirstToReopen) {
    startServer();
    // This test plays the first instance.
    const xcb_window_t window = xcb_generate_id(x().raw());
    xcb_create_window(x().raw(), 0, window, x().root(), 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_set_selection_owner(x().raw(), window, x().atom("_VELMO_INSTANCE_S0"), XCB_CURRENT_TIME);
    ASSERT_EQ(x().selectionOwner("_VELMO_INSTANCE_S0"), window);
    EXPECT_EQ(runToEnd().first, 0);
    bool asked = false;
    while (auto* event = xcb_poll_for_event(x().raw())) {
        const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(*event);
        asked = asked || ((event->response_type & 0x7f) == XCB_CLIENT_MESSAGE && message.window == window &&
                          message.type == x().atom("_VELMO_REOPEN"));
        free(event);
    }
    EXPECT_TRUE(asked);
}

TEST_F(Start, OfTwoAtOnceOneRuns) {
    startServer();
    auto one = run({velmoProgram});
    auto other = run({velmoProgram});
    ASSERT_TRUE(eventually([&] { return x().windowTitled("Velmo.Toggle").has_value(); }));
    const auto oneEnded = one.wait(milliseconds(1500));
    const auto otherEnded = other.wait(milliseconds(1500));
    EXPECT_NE(oneEnded.has_value(), otherEnded.has_value());
    EXPECT_EQ(oneEnded.value_or(otherEnded.value_or(-1)), 0);
}

TEST_F(Start, NextStartAfterASuddenEndFindsTheDisplayFree) {
    startServer();
    startVelmo();
    velmo().signal(SIGKILL);
    EXPECT_EQ(velmo().wait(milliseconds(2000)), 128 + SIGKILL);
    startVelmo();
    stopVelmo();
}

TEST_F(Start, RecordsTheFirstLaunch) {
    std::filesystem::remove(defaultsFile());
    startServer();
    startVelmo();
    EXPECT_TRUE(eventually([&] { return std::filesystem::exists(defaultsFile()); }));
    EXPECT_EQ(readDefaults()["hasCompletedFirstLaunch"], true);
    EXPECT_FALSE(readDefaults().contains("autoRehide")) << "defaults that nobody chose are not stored";
    const auto mode = std::filesystem::status(defaultsFile()).permissions();
    EXPECT_EQ(mode, std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
}

TEST_F(Start, DamagedDefaultsAreSetAside) {
    const std::string damaged = "{\"autoRehide\": fal";
    std::filesystem::create_directories(defaultsFile().parent_path());
    std::ofstream(defaultsFile()) << damaged;
    startServer();
    startVelmo();
    stopVelmo();
    auto aside = defaultsFile();
    aside += ".damaged-1";
    std::ifstream stream(aside);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(stream), {}), damaged);
    EXPECT_EQ(readDefaults()["hasCompletedFirstLaunch"], true);
}

TEST_F(Start, EndOfTheDisplayEndsTheProgram) {
    startServer();
    startVelmo();
    stopServer();
    EXPECT_EQ(velmo().wait(milliseconds(3000)), 1);
}

}  // namespace

}  // namespace velmo::desktop
