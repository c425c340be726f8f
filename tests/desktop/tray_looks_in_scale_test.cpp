#include "looks_session.h"

#include <string>
#include <tuple>

namespace velmo::desktop {

namespace {

class TrayLooksInScale : public LooksSession,
                         public testing::WithParamInterface<std::tuple<int, Composition>> {
protected:
    void startInScale(const std::string& clickAction = "revealInMenuBar") {
        const auto [resolution, composition] = GetParam();
        start("1280x720x24", clickAction);
        addToResources("Xft.dpi:\t" + std::to_string(resolution) + "\n");
        startComposition(composition);
        startIcons();
        for (const auto icon : icons_)
            EXPECT_EQ(x().area(icon)->width, TrayClient::side * resolution / 96);
    }
};

INSTANTIATE_TEST_SUITE_P(Desktop, TrayLooksInScale,
                         testing::Combine(testing::Values(144, 192),
                                          testing::Values(Composition::none, Composition::picom)),
                         [](const auto& suite) {
                             return "Of" + std::to_string(std::get<0>(suite.param)) + "Dpi" +
                                    nameOf(std::get<1>(suite.param));
                         });

TEST_P(TrayLooksInScale, AreThoseThatProgramsHaveDrawn) {
    startInScale();
    toggleTo(true);
    expectSeen(firstColors, lightBar);
    paintAll(otherColors);
    expectSeen(otherColors, lightBar);
    toggleTo(false);
    paintAll(firstColors);
    toggleTo(true);
    expectSeen(firstColors, lightBar);
}

TEST_P(TrayLooksInScale, AreTheSameInThePanel) {
    startInScale("showPanel");
    expectSeenInPanel();
}

class TrayLooksOnDeepScreens : public LooksSession, public testing::WithParamInterface<int> {};

INSTANTIATE_TEST_SUITE_P(Desktop, TrayLooksOnDeepScreens, testing::Values(16, 30),
                         [](const auto& suite) { return "Of" + std::to_string(suite.param) + "Bits"; });

TEST_P(TrayLooksOnDeepScreens, AreThoseThatProgramsHaveDrawn) {
    start("1280x720x" + std::to_string(GetParam()));
    startIcons();
    toggleTo(true);
    expectSeen(firstColors, lightBar, 9);
    toggleTo(false);
    paintAll(otherColors);
    toggleTo(true);
    expectSeen(otherColors, lightBar, 9);
}

}  // namespace

}  // namespace velmo::desktop
