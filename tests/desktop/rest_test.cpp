#include "process_figures.h"
#include "running_session.h"

namespace velmo::desktop {

namespace {

class AtRest : public RunningSession {
protected:
    /// What the toolkit for menus and windows brings with it stays from then on.
    void loadToolkit() {
        click(toggle(), rightButton);
        ASSERT_TRUE(eventually([&] { return hasLoaded("velmo-qt"); }));
        ASSERT_TRUE(comesToRest());
        xdotool({"key", "Escape"});
    }
};

TEST_F(AtRest, ToolkitIsNotWokenByTheButtonsOfTheMouse) {
    ASSERT_NO_FATAL_FAILURE(loadToolkit());
    movePointer(400, 500);
    ASSERT_TRUE(comesToRest());
    const SleepCounter sleeps(velmo().id(), "QXcbEventQueue");
    for (int count = 0; count < 10; ++count)
        xdotool({"click", "1"});
    EXPECT_TRUE(comesToRest());
    EXPECT_LT(sleeps.count(), 5);
}

}  // namespace

}  // namespace velmo::desktop
