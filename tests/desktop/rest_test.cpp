#include "built_files.h"
#include "process_figures.h"
#include "running_session.h"

#include <set>
#include <string>

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

class ClosedWindows : public DesktopSession {
protected:
    bool isShown(const std::string& title) const {
        const auto window = x().windowTitled(title);
        return window && x().isViewable(*window);
    }
    /// Kilobytes that the toolkit shares with the X server.
    long pictures() { return sharedMemoryOf(velmo().id()); }
    void expectPictureWhileOpen(const std::string& title) {
        EXPECT_TRUE(eventually([&] { return isShown(title) && pictures() > 0; })) << title << " opens";
        ASSERT_TRUE(comesToRest());
        const auto place = x().area(x().windowTitled(title).value_or(x().root())).value_or(Area{});
        const auto shown = x().pixels(place);
        EXPECT_GT(std::set(shown.begin(), shown.end()).size(), 10U) << title << " is drawn";
        if (const auto settings = settingsWindow())
            closeWindow(*settings);
        else
            xdotool({"key", "Escape"});
        EXPECT_TRUE(eventually([&] { return !isShown(title) && pictures() == 0; }))
            << pictures() << " KB are held for " << title;
    }
};

TEST_F(ClosedWindows, KeepNoPicture) {
    startServer();
    startWindowManager();
    writeDefaults(clockDefaults());
    startVelmo();
    // The second time they are windows that have been hidden.
    for (int count = 0; count < 2; ++count) {
        outputOf({velmoProgram}, environment_);
        expectPictureWhileOpen("Velmo Settings");
        outputOf({velmoProgram, "panel"}, environment_);
        expectPictureWhileOpen("Velmo.Panel");
        click(*x().windowTitled("Velmo.Clock"));
        expectPictureWhileOpen("Velmo.Popover");
    }
}

}  // namespace

}  // namespace velmo::desktop
