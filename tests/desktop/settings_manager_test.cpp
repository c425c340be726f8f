#include "bar_session.h"

#include <chrono>
#include <fstream>

namespace velmo::desktop {

namespace {

/// The test tells of a manager of the desktop's settings.
class SettingsManagers : public BarSession {
protected:
    void SetUp() override {
        BarSession::SetUp();
        startServer();
        startBar();
        turnUntil([] { return false; }, milliseconds(300));
    }
    /// As one does that has just begun, and as anybody can.
    void announce() const {
        xcb_client_message_event_t message{};
        message.response_type = XCB_CLIENT_MESSAGE;
        message.format = 32;
        message.window = x().root();
        message.type = x().atom("MANAGER");
        message.data.data32[1] = x().atom("_XSETTINGS_S0");
        xcb_send_event(x().raw(), 0, x().root(), XCB_EVENT_MASK_STRUCTURE_NOTIFY,
                       reinterpret_cast<const char*>(&message));
        x().exists(x().root());
    }
    unsigned requests() const { return xcb_no_operation(connection_->raw()).sequence; }
};

TEST_F(SettingsManagers, ThatAreAnnouncedWithoutEndCostLittle) {
    const auto requestsOfOne = [&] {
        const auto before = requests();
        announce();
        turnUntil([] { return false; }, milliseconds(300));
        return requests() - before;
    }();
    ASSERT_GT(requestsOfOne, 1U);
    const auto before = requests();
    int announced = 0;
    const auto end = std::chrono::steady_clock::now() + milliseconds(1000);
    while (std::chrono::steady_clock::now() < end) {
        announce();
        loop_.turn();
        ++announced;
    }
    EXPECT_GT(announced, 200);
    // One each 100 ms.
    EXPECT_LT(requests() - before, requestsOfOne * 15);
}

TEST_F(SettingsManagers, AreFollowedWhenTheyComeAndWhenTheyHaveGone) {
    std::ofstream(home_ / "xsettingsd.conf") << "Net/ThemeName \"Adwaita-dark\"\n";
    for (int round = 0; round < 2; ++round) {
        {
            const auto manager = run({"xsettingsd", "-c", home_ / "xsettingsd.conf"});
            EXPECT_TRUE(turnUntil([&] { return settings_->appearance().dark; })) << round;
        }
        EXPECT_TRUE(turnUntil([&] { return !settings_->appearance().dark; })) << round;
    }
}

}  // namespace

}  // namespace velmo::desktop
