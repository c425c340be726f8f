#include "desktop_session.h"
#include "process_figures.h"

#include <fstream>
#include <iterator>
#include <string>
#include <thread>

namespace velmo::desktop {

namespace {

class AtRest : public DesktopSession {
protected:
    void SetUp() override {
        DesktopSession::SetUp();
        startServer();
        startWindowManager();
        startVelmo();
    }

    /// What the toolkit for menus and windows brings with it stays from then on.
    void loadToolkit() {
        click(toggle(), rightButton);
        ASSERT_TRUE(eventually([&] {
            std::ifstream maps("/proc/" + std::to_string(velmo().id()) + "/maps");
            const std::string text{std::istreambuf_iterator<char>(maps), {}};
            return text.find("velmo-qt") != std::string::npos;
        }));
        std::this_thread::sleep_for(milliseconds(500));
        xdotool({"key", "Escape"});
    }
};

TEST_F(AtRest, ToolkitIsNotWokenByTheButtonsOfTheMouse) {
    ASSERT_NO_FATAL_FAILURE(loadToolkit());
    movePointer(400, 500);
    std::this_thread::sleep_for(milliseconds(500));
    const SleepCounter sleeps(velmo().id(), "QXcbEventQueue");
    for (int count = 0; count < 10; ++count)
        xdotool({"click", "1"});
    std::this_thread::sleep_for(milliseconds(100));
    EXPECT_LT(sleeps.count(), 5);
}

}  // namespace

}  // namespace velmo::desktop
