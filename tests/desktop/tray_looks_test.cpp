#include "film.h"
#include "looks_session.h"

#include <algorithm>
#include <fstream>
#include <optional>
#include <set>
#include <string>

namespace velmo::desktop {

namespace {

class TrayLooks : public LooksSession, public testing::WithParamInterface<Composition> {
protected:
    void startBeside(const std::string& clickAction = "revealInMenuBar") {
        start("1280x720x24", clickAction);
        startComposition(GetParam());
        startIcons();
    }
    /// With a desktop that says which theme it has, a light one at first.
    void startInTheLight() {
        write("Adwaita");
        startBeside();
        settings_.emplace(run({"xsettingsd", "-c", settingsFile()}));
    }
    void changeTheme(const std::string& theme) const {
        write(theme);
        settings_->signal(SIGHUP);
    }
    /// Until the screen shows what the bar does.
    void settle() {
        EXPECT_TRUE(comesToRest(milliseconds(100)));
        if (GetParam() != Composition::none)
            untilComposited();
    }

private:
    std::string settingsFile() const { return home_ / "xsettingsd.conf"; }
    void write(const std::string& theme) const {
        std::ofstream(settingsFile()) << "Net/ThemeName \"" << theme << "\"\n";
    }

    std::optional<ChildProcess> settings_;
};

INSTANTIATE_TEST_SUITE_P(Desktop, TrayLooks,
                         testing::Values(Composition::none, Composition::picom, Composition::xfwm4,
                                         Composition::metacity),
                         [](const auto& suite) { return nameOf(suite.param); });

TEST_P(TrayLooks, AreThoseThatProgramsHaveDrawn) {
    startBeside();
    toggleTo(true);
    expectSeen(firstColors, lightBar);
    paintAll(otherColors);
    expectSeen(otherColors, lightBar);
    toggleTo(false);
    toggleTo(true);
    expectSeen(otherColors, lightBar);
}

TEST_P(TrayLooks, HaveTheNewBackgroundBehindThemWhenTheDesktopBecomesDark) {
    startInTheLight();
    toggleTo(true);
    expectSeen(firstColors, lightBar);
    settle();
    changeTheme("Adwaita-dark");
    expectSeen(firstColors, darkBar);
    toggleTo(false);
    // Seen by nobody, it changes as well.
    changeTheme("Adwaita");
    ASSERT_TRUE(eventually([&] { return x().pixel(600, 5) == lightBar; }));
    toggleTo(true);
    expectSeen(firstColors, lightBar);
}

TEST_P(TrayLooks, OfFormerTimesAreNotSeenWhenIconsComeBack) {
    startBeside();
    toggleTo(true);
    expectSeen(firstColors, lightBar);
    Colors present = otherColors;
    Colors former = firstColors;
    for (int round = 0; round < 6; ++round) {
        toggleTo(false);
        paintAll(present);
        settle();
        std::set<std::uint32_t> stale = {white, 0};
        for (std::size_t index = 0; index < looks.size(); ++index)
            stale.insert(expectedPixel(looks[index], former[index], 10, 10, lightBar));
        Film film(environment_.at("DISPLAY"), leftOfToggle());
        toggleTo(true);
        expectSeen(present, lightBar);
        settle();
        for (const auto& frame : film.frames()) {
            const auto found =
                std::find_if(frame.begin(), frame.end(), [&](auto pixel) { return stale.contains(pixel); });
            EXPECT_EQ(found, frame.end()) << "round " << round << ", " << std::hex << *found;
        }
        std::swap(present, former);
    }
}

TEST_P(TrayLooks, OfTheLightBarAreNotSeenWhenAProgramShowsItsIconAgainInTheDark) {
    startInTheLight();
    toggleTo(true);
    expectSeen(firstColors, lightBar);
    const auto icon = icons_[2];
    const Area place = *x().area(icon);
    // Its program maps it without asking. So it was to be drawn just before, and that is not done twice at
    // once.
    const std::uint32_t yes = 1;
    xcb_change_window_attributes(client_->x().raw(), icon, XCB_CW_OVERRIDE_REDIRECT, &yes);
    const auto translucent = [&](std::uint32_t bar) {
        return expectedPixel(Look::translucent, firstColors[2], 10, 10, bar);
    };
    for (int round = 0; round < 6; ++round) {
        client_->setEmbeddingFlags(icon, 0);
        ASSERT_TRUE(eventually([&] { return !x().isViewable(icon); }));
        const auto bar = round % 2 == 0 ? darkBar : lightBar;
        const auto former = round % 2 == 0 ? lightBar : darkBar;
        changeTheme(round % 2 == 0 ? "Adwaita-dark" : "Adwaita");
        ASSERT_TRUE(eventually([&] { return x().pixel(600, 5) == bar; }));
        settle();
        Film film(environment_.at("DISPLAY"), place);
        xcb_map_window(client_->x().raw(), icon);
        client_->setEmbeddingFlags(icon, 1);
        expectSeen(firstColors, bar);
        settle();
        for (const auto& frame : film.frames()) {
            EXPECT_EQ(std::count(frame.begin(), frame.end(), former), 0) << "round " << round;
            EXPECT_EQ(std::count(frame.begin(), frame.end(), translucent(former)), 0) << "round " << round;
        }
    }
}

TEST_P(TrayLooks, AreNeverAbsentForAMomentWhileIconsMove) {
    startBeside();
    std::size_t looked = 0;
    for (int round = 0; round < 8; ++round) {
        settle();
        const auto before = x().pixels(leftOfToggle());
        Film film(environment_.at("DISPLAY"), leftOfToggle());
        toggleTo(round % 2 == 0);
        settle();
        settle();
        const auto& frames = film.frames();
        const auto after = x().pixels(leftOfToggle());
        ASSERT_NE(before, after);
        looked += frames.size();
        for (const auto& frame : frames) {
            for (std::size_t index = 0; index < frame.size(); ++index) {
                ASSERT_TRUE(frame[index] == before[index] || frame[index] == after[index])
                    << "round " << round << ", column "
                    << index % static_cast<std::size_t>(leftOfToggle().width) << ": " << std::hex
                    << frame[index] << ", before " << before[index] << ", after " << after[index];
            }
        }
    }
    EXPECT_GE(looked, 16U);
}

TEST_P(TrayLooks, AreNotDrawnAnewForEachMove) {
    startBeside();
    toggleTo(true);
    settle();
    const int exposures = client_->exposures();
    for (const bool isRevealed : {false, true, false, true}) {
        toggleTo(isRevealed);
        settle();
    }
    EXPECT_EQ(client_->exposures(), exposures) << "what programs have drawn is kept";
}

TEST_P(TrayLooks, AreTheSameInThePanel) {
    startBeside("showPanel");
    expectSeenInPanel();
}

TEST_P(TrayLooks, AreTheirOwnOnceTheyAreGivenBack) {
    startBeside();
    makeWindow({0, 0, 40, 40}, white);
    stopVelmo();
    const auto icon = icons_[2];
    ASSERT_TRUE(eventually([&] { return x().parent(icon) == x().root(); }));
    ASSERT_TRUE(eventually([&] { return x().pixel(10, 10) == white; }));
    // No window manager puts a frame around it.
    const std::uint32_t yes = 1;
    xcb_change_window_attributes(client_->x().raw(), icon, XCB_CW_OVERRIDE_REDIRECT, &yes);
    xcb_map_window(client_->x().raw(), icon);
    ASSERT_TRUE(client_->x().isViewable(icon));
    ASSERT_EQ(x().area(icon), (Area{0, 0, TrayClient::side, TrayClient::side}));
    if (GetParam() != Composition::none) {
        const auto wanted = expectedPixel(Look::translucent, firstColors[2], 10, 10, white);
        EXPECT_TRUE(eventually([&] { return isNear(x().pixel(10, 10), wanted, 1); }))
            << std::hex << x().pixel(10, 10) << ", not " << wanted;
    } else {
        EXPECT_TRUE(eventually([&] { return x().pixel(10, 10) != white; }));
    }
}

}  // namespace

}  // namespace velmo::desktop
