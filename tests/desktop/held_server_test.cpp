#include "beside.h"
#include "session_bus_desktop.h"

#include <algorithm>
#include <chrono>
#include <functional>
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
        leaving_ = programWithItem("Leaving");
        untilShown("Leaving");
        staying_ = programWithItem("Staying");
        untilShown("Staying");
        ASSERT_TRUE(comesToRest());
    }

    std::optional<Area> areaOf(const std::string& title) const { return x().area(itemTitled(title)); }
    /// Holds the server for half a second while the work is done, and asks Velmo all the time.
    void expectAnswersDuring(const std::function<void()>& work) const {
        BusProgram bystander(busAddress());
        xcb_grab_server(x().raw());
        x().exists(x().root());
        const auto before = x().children(bar()).size();
        work();
        milliseconds longest(0);
        int answers = 0;
        Beside asking(Beside::Times::untilTheEnd, [&] {
            const auto asked = Clock::now();
            if (bystander.ping("org.kde.StatusNotifierWatcher"))
                ++answers;
            longest = std::max(longest, std::chrono::duration_cast<milliseconds>(Clock::now() - asked));
            std::this_thread::sleep_for(milliseconds(5));
        });
        std::this_thread::sleep_for(milliseconds(500));
        EXPECT_EQ(x().children(bar()).size(), before) << "the server is held";
        xcb_ungrab_server(x().raw());
        xcb_flush(x().raw());
        asking.end();
        EXPECT_GE(answers, 5);
        EXPECT_LT(longest, milliseconds(100));
    }

    std::unique_ptr<BusProgram> staying_;
    std::unique_ptr<BusProgram> leaving_;
};

TEST_F(HeldServer, KeepsNobodyOnTheBusWaitingWhileAnItemGoes) {
    const auto place = areaOf("Leaving");
    ASSERT_LT(areaOf("Staying")->x, place->x);
    expectAnswersDuring([&] { leaving_.reset(); });
    EXPECT_TRUE(eventually([&] { return itemTitled("Leaving") == XCB_WINDOW_NONE; }));
    EXPECT_TRUE(eventually([&] { return areaOf("Staying") == place; }));
}

TEST_F(HeldServer, KeepsNobodyOnTheBusWaitingWhileAnItemComes) {
    std::unique_ptr<BusProgram> coming;
    expectAnswersDuring([&] { coming = programWithItem("Coming"); });
    EXPECT_TRUE(eventually([&] { return isOnScreen(itemTitled("Coming")); }));
    EXPECT_LT(areaOf("Coming")->x, areaOf("Staying")->x);
}

}  // namespace

}  // namespace velmo::desktop
