#include "built_files.h"
#include "screens_session.h"

#include <cstdlib>
#include <string>

namespace velmo::desktop {

namespace {

class SettingsOnScreens : public ScreensSession, public testing::WithParamInterface<std::string> {
protected:
    void SetUp() override {
        IconsSession::SetUp();
        startServer("2560x1440x24");
        if (isManaged())
            startWindowManagerNamed(GetParam());
        startVelmo();
        startAgain();
        ASSERT_TRUE(eventually([&] { return shown("Velmo Settings").has_value(); }));
    }
    bool isManaged() const { return GetParam() != "nobody"; }
    void startAgain() const { outputOf({velmoProgram}, environment_); }
    Area settings() const { return x().area(*shown("Velmo Settings")).value_or(Area{}); }
    void moveSettings(int pixelX, int pixelY) const {
        xdotool({"windowmove", std::to_string(*shown("Velmo Settings")), std::to_string(pixelX),
                 std::to_string(pixelY)});
        ASSERT_TRUE(eventually([&] { return areAt(pixelX, pixelY); }));
        // The place is written down once they rest there.
        ASSERT_TRUE(eventually([&] { return readDefaults().contains("windowPlace.Velmo.SettingsWindow"); }));
    }
    void closeSettings() const {
        closeWindow(*shown("Velmo Settings"));
        ASSERT_TRUE(eventually([&] { return !shown("Velmo Settings"); }));
    }
    void expectToOpenAt(int pixelX, int pixelY) const {
        startAgain();
        ASSERT_TRUE(eventually([&] { return shown("Velmo Settings").has_value(); }));
        EXPECT_TRUE(eventually([&] { return areAt(pixelX, pixelY); }))
            << settings().x << ", " << settings().y;
    }
    /// Returns once Velmo knows.
    void changeScreen(int width, int height) {
        setMode(width, height);
        ASSERT_TRUE(eventually([&] { return x().area(bar())->width == width; }));
        ASSERT_TRUE(comesToRest());
    }
    /// On the smaller screen, wherever a window manager has put them: some of the title is there to be
    /// dragged.
    bool canBeFound() const {
        const auto area = settings();
        return area.x + 50 <= 1280 && area.x + area.width >= 50 && area.y >= barThickness && area.y < 720;
    }
    /// To the pixel where nobody puts a frame around them.
    bool areAt(int pixelX, int pixelY) const {
        const int frame = isManaged() ? 40 : 0;
        return std::abs(settings().x - pixelX) <= frame && std::abs(settings().y - pixelY) <= frame;
    }
};

const auto nameOfManager = [](const auto& suite) { return suite.param; };

/// Without a window manager, nobody else brings them back; one may do so, or put them elsewhere. i3 has its
/// own idea of where they were, under the bar.
class SettingsOnAScreen : public SettingsOnScreens {};

INSTANTIATE_TEST_SUITE_P(ManagedBy, SettingsOnAScreen,
                         testing::Values("nobody", "openbox", "metacity", "xfwm4"), nameOfManager);

TEST_P(SettingsOnAScreen, AreBroughtToOneThatIsThereWhenTheyAreWantedAgain) {
    moveSettings(1300, 300);
    setMode(1280, 720);
    startAgain();
    const auto areBack = [&] {
        return isManaged() ? canBeFound() : isInside(settings(), {0, barThickness, 1280, 720 - barThickness});
    };
    EXPECT_TRUE(eventually(areBack)) << settings().x << ", " << settings().y;
    EXPECT_TRUE(stays(areBack, moment)) << settings().x << ", " << settings().y;
}

TEST_P(SettingsOnAScreen, StayWhereTheyCanBeSeen) {
    moveSettings(1200, 300);
    setMode(1280, 720);
    startAgain();
    EXPECT_TRUE(stays([&] { return isManaged() ? canBeFound() : areAt(1200, 300); }, moment))
        << settings().x << ", " << settings().y;
}

/// Once they are opened again.
class ClosedSettingsOnAScreen : public SettingsOnScreens {};

INSTANTIATE_TEST_SUITE_P(ManagedBy, ClosedSettingsOnAScreen,
                         testing::Values("nobody", "openbox", "i3", "xfwm4", "metacity", "fluxbox", "icewm"),
                         nameOfManager);

TEST_P(ClosedSettingsOnAScreen, OpenWhollyOnASmallerOneAndWhereTheyWereOnceThatIsThereAgain) {
    moveSettings(1200, 300);
    closeSettings();
    changeScreen(1280, 720);
    const auto chosen = readDefaults()["windowPlace.Velmo.SettingsWindow"];
    expectToOpenAt(1280 - 540, 720 - 500);
    closeSettings();
    EXPECT_EQ(readDefaults()["windowPlace.Velmo.SettingsWindow"], chosen);
    changeScreen(2560, 1440);
    expectToOpenAt(1200, 300);
}

TEST_P(ClosedSettingsOnAScreen,
       OpenWhollyOnOneThatHasBecomeSmallerWhileTheyWereOpenAndWhereTheyWereOnceItIsNot) {
    moveSettings(1200, 300);
    ASSERT_TRUE(comesToRest());
    changeScreen(1280, 720);
    closeSettings();
    expectToOpenAt(1280 - 540, 720 - 500);
    closeSettings();
    changeScreen(2560, 1440);
    expectToOpenAt(1200, 300);
}

/// Others let nobody put them there, or bring them in.
class SettingsBeyondTheEdge : public SettingsOnScreens {};

INSTANTIATE_TEST_SUITE_P(ManagedBy, SettingsBeyondTheEdge, testing::Values("nobody", "openbox", "i3"),
                         nameOfManager);

TEST_P(SettingsBeyondTheEdge, OpenWhereTheUserHadThemOnceTheScreensAreThoseAgain) {
    moveSettings(-200, 300);
    closeSettings();
    changeScreen(1280, 720);
    expectToOpenAt(0, 720 - 500);
    closeSettings();
    changeScreen(2560, 1440);
    expectToOpenAt(-200, 300);
}

}  // namespace

}  // namespace velmo::desktop
