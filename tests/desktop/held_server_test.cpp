#include "session_bus_desktop.h"

#include <algorithm>
#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <thread>

namespace velmo::desktop {

namespace {

using Clock = std::chrono::steady_clock;

/// Another program has the X server for itself, and the bus goes on.
class HeldServer : public SessionBusDesktop {
protected:
    void SetUp() override {
        SessionBusDesktop::SetUp();
        staying_ = programWithItem("Staying");
        untilShown("Staying");
        ASSERT_TRUE(comesToRest());
        before_ = areaOf("Staying");
        leaving_ = programWithItem("Leaving");
        untilShown("Leaving");
        ASSERT_TRUE(comesToRest());
    }

    std::optional<Area> areaOf(const std::string& title) const { return x().area(itemTitled(title)); }

    std::unique_ptr<BusProgram> staying_;
    std::unique_ptr<BusProgram> leaving_;
    std::optional<Area> before_;
};

TEST_F(HeldServer, KeepsNobodyOnTheBusWaitingWhileAnItemGoes) {
    ASSERT_NE(areaOf("Staying"), areaOf("Leaving"));
    const auto watcher = std::string("org.kde.StatusNotifierWatcher");
    BusProgram bystander(busAddress());
    xcb_grab_server(x().raw());
    x().exists(x().root());
    const auto begin = Clock::now();
    leaving_.reset();
    milliseconds longest(0);
    while (Clock::now() - begin < milliseconds(500)) {
        const auto asked = Clock::now();
        ASSERT_TRUE(bystander.ping(watcher));
        longest = std::max(longest, std::chrono::duration_cast<milliseconds>(Clock::now() - asked));
        std::this_thread::sleep_for(milliseconds(5));
    }
    EXPECT_LT(longest, milliseconds(100));
    EXPECT_NE(itemTitled("Leaving"), xcb_window_t{XCB_WINDOW_NONE}) << "the server has been held";
    xcb_ungrab_server(x().raw());
    EXPECT_TRUE(eventually([&] { return itemTitled("Leaving") == XCB_WINDOW_NONE; }));
    EXPECT_TRUE(eventually([&] { return areaOf("Staying") == before_; }));
}

}  // namespace

}  // namespace velmo::desktop
