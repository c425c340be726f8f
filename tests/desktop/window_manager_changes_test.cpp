#include "bar_under.h"

namespace velmo::desktop {

namespace {

/// What the bar is once the window manager is another one, or the same anew.
class BarUnderNew : public BarUnder {
protected:
    void expectAllOfABar(const std::string& manager) {
        const auto window = startActiveWindow();
        expectStripToItself(window);
        change(window, "add,fullscreen");
        EXPECT_TRUE(isLeftTo(window));
        change(window, "remove,fullscreen");
        EXPECT_TRUE(barStaysOnTopAt(640, 13));
        expectDragsAndClicksToTakeNoFocus();
        expectBarOnAnotherWorkspace(manager);
    }
};

TEST_P(BarUnderNew, StaysWhenAnotherWindowManagerTakesOver) {
    startWithTwoSections();
    const auto next = windowManagerAfter(GetParam());
    replaceWindowManager(GetParam(), next);
    expectAllOfABar(next);
}

TEST_P(BarUnderNew, StaysWhenTheWindowManagerCrashesAndComesBack) {
    startWithTwoSections();
    crashWindowManager();
    EXPECT_TRUE(barStaysOnTopAt(640, 13));
    startWindowManagerNamed(GetParam());
    expectAllOfABar(GetParam());
}

INSTANTIATE_TEST_SUITE_P(WindowManagers, BarUnderNew, windowManagers,
                         [](const auto& manager) { return manager.param; });

}  // namespace

}  // namespace velmo::desktop
