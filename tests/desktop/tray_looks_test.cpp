#include "film.h"
#include "icon_pixels.h"
#include "panel_window_session.h"
#include "tray_client.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <thread>
#include <tuple>
#include <vector>

namespace velmo::desktop {

namespace {

using Look = TrayClient::Look;

constexpr std::array<Look, 4> looks = {Look::opaque, Look::parentRelative, Look::translucent, Look::shaped};
constexpr std::array<std::uint32_t, 4> firstColors = {0xc01020, 0x10a020, 0x2040e0, 0xc0a010};
constexpr std::array<std::uint32_t, 4> otherColors = {0x10b0b0, 0xb010b0, 0xe07010, 0x305010};
constexpr std::uint32_t white = 0xffffff;

bool isInside(int column, int row) {
    const auto within = [](int place) {
        return place >= TrayClient::margin && place < TrayClient::side - TrayClient::margin;
    };
    return within(column) && within(row);
}

/// What is seen of an icon, in pixels of its window, before that background.
std::uint32_t expectedPixel(Look look, std::uint32_t color, int column, int row, std::uint32_t background,
                            int side = TrayClient::side) {
    const bool isInIcon = column >= 0 && row >= 0 && column < side && row < side;
    const bool isSmall = look == Look::parentRelative || look == Look::shaped;
    if (!isInIcon || (isSmall && !isInside(column, row)))
        return background;
    if (look != Look::translucent)
        return color;
    const auto half = [&](int shift) { return ((color >> shift & 0xff) * 0x80 / 255) << shift; };
    return over(0x80U << 24 | half(16) | half(8) | half(0), background);
}

bool isNear(std::uint32_t one, std::uint32_t other, int tolerance) {
    for (const int shift : {0, 8, 16}) {
        if (std::abs(static_cast<int>(one >> shift & 0xff) - static_cast<int>(other >> shift & 0xff)) >
            tolerance)
            return false;
    }
    return true;
}

/// The background, wherever that fills most.
std::uint32_t mostFrequent(const std::vector<std::uint32_t>& pixels) {
    std::map<std::uint32_t, int> counts;
    for (const auto pixel : pixels)
        ++counts[pixel];
    return std::max_element(counts.begin(), counts.end(),
                            [](const auto& one, const auto& other) { return one.second < other.second; })
        ->first;
}

/// An icon of each look, hidden left of the divider, and one that is always shown.
class LooksSession : public PanelWindowSession {
protected:
    void start(const std::string& screen, const std::string& clickAction = "revealInMenuBar") {
        startServer(screen);
        writeDefaults({{"autoRehide", false},
                       {"hideOnClickOutside", false},
                       {"clickAction", clickAction},
                       {"statusItemOrder",
                        {"Velmo.Toggle", "shown.Icon", "Velmo.Divider", "icon0.Icon", "icon1.Icon",
                         "icon2.Icon", "icon3.Icon"}}});
    }
    void TearDown() override {
        client_.reset();
        PanelWindowSession::TearDown();
    }

    void startIcons() {
        // Nothing of what lies behind the panel has a colour of interest.
        if (readDefaults()["clickAction"] == "showPanel")
            makeWindow({0, 0, 1280, 700}, 0x485058);
        startVelmo();
        client_ = std::make_unique<TrayClient>(environment_.at("DISPLAY"));
        for (std::size_t index = 0; index < looks.size(); ++index) {
            icons_[index] =
                client_->makeIcon("icon" + std::to_string(index), looks[index], firstColors[index]);
            client_->dock(icons_[index]);
        }
        shown_ = client_->makeIcon("shown", Look::opaque, 0x808080);
        client_->dock(shown_);
        for (const auto icon : icons_)
            ASSERT_TRUE(eventually([&] { return isHidden(icon); }));
        ASSERT_TRUE(eventually([&] { return isOnScreen(shown_); }));
        // What follows a docking has come to its end.
        ASSERT_TRUE(comesToRest());
    }
    void paintAll(const std::array<std::uint32_t, 4>& colors) {
        for (std::size_t index = 0; index < icons_.size(); ++index)
            client_->setColor(icons_[index], colors[index]);
    }
    void toggleTo(bool isRevealed) {
        click(toggle());
        ASSERT_TRUE(eventually([&] {
            return std::all_of(icons_.begin(), icons_.end(),
                               [&](auto icon) { return isRevealed ? isOnScreen(icon) : isHidden(icon); });
        }));
    }
    /// Of the slot and what it shows, the first place that is not as it should be. Empty where there is none.
    std::string faultOf(std::size_t index, std::uint32_t color, std::uint32_t background,
                        int tolerance = 1) const {
        const auto place = *x().area(icons_[index]);
        const Area slot = {place.x - 4, place.y - 2, place.width + 8, place.height + 4};
        const auto pixels = x().pixels(slot);
        for (int row = 0; row < slot.height; ++row) {
            for (int column = 0; column < slot.width; ++column) {
                const auto seen = pixels[static_cast<std::size_t>(row * slot.width + column)];
                const auto wanted =
                    expectedPixel(looks[index], color, column - 4, row - 2, background, place.width);
                if (!isNear(seen, wanted, tolerance)) {
                    std::ostringstream text;
                    text << "icon " << index << " at " << column - 4 << ' ' << row - 2 << ": " << std::hex
                         << seen << ", not " << wanted;
                    return text.str();
                }
            }
        }
        return {};
    }
    void expectSeen(const std::array<std::uint32_t, 4>& colors, std::uint32_t background, int tolerance = 1) {
        for (std::size_t index = 0; index < icons_.size(); ++index) {
            EXPECT_TRUE(
                eventually([&] { return faultOf(index, colors[index], background, tolerance).empty(); },
                           milliseconds(3000)))
                << faultOf(index, colors[index], background, tolerance);
        }
    }
    /// In the panel, which has each of them once, pixel by pixel, and nothing of former times.
    void expectSeenInPanel() {
        for (const auto& colors : {firstColors, otherColors}) {
            paintAll(colors);
            // Pictures that were taken before are old by then.
            std::this_thread::sleep_for(milliseconds(2500));
            openPanelWindow();
            const long side = x().area(icons_.front())->width;
            constexpr long square =
                (TrayClient::side - 2 * TrayClient::margin) * (TrayClient::side - 2 * TrayClient::margin);
            EXPECT_TRUE(eventually([&] { return countInPanel(colors[0]) == side * side; }))
                << countInPanel(colors[0]);
            EXPECT_TRUE(eventually([&] { return countInPanel(colors[1]) == square; }))
                << countInPanel(colors[1]);
            EXPECT_TRUE(eventually([&] { return countInPanel(colors[3]) == square; }))
                << countInPanel(colors[3]);
            EXPECT_TRUE(eventually([&] { return countTranslucentInPanel(colors[2]) == side * side; }))
                << countTranslucentInPanel(colors[2]);
            EXPECT_EQ(countInPanel(colors[2]), 0) << "it is half transparent";
            for (const auto color : colors == firstColors ? otherColors : firstColors)
                EXPECT_EQ(countInPanel(color), 0);
            EXPECT_EQ(countInPanel(0), 0);
            xdotool({"key", "Escape"});
            ASSERT_TRUE(eventually([&] { return !panel(); }));
        }
    }
    std::vector<std::uint32_t> panelPixels() const {
        auto area = panel().value_or(Area{0, 0, 1, 1});
        // Its shadow goes beyond the screen.
        area.width = std::min(area.width, 1280 - area.x);
        return x().pixels(area);
    }
    long countInPanel(std::uint32_t color) const {
        const auto pixels = panelPixels();
        return std::count(pixels.begin(), pixels.end(), color);
    }
    long countTranslucentInPanel(std::uint32_t color) const {
        const auto pixels = panelPixels();
        const auto wanted = expectedPixel(Look::translucent, color, 0, 0, mostFrequent(pixels));
        return std::count_if(pixels.begin(), pixels.end(),
                             [&](auto pixel) { return isNear(pixel, wanted, 1); });
    }
    /// The bar from the left edge of the screen to the toggle.
    Area leftOfToggle() const { return {0, 0, x().area(toggle())->x, 26}; }

    std::unique_ptr<TrayClient> client_;
    std::array<xcb_window_t, 4> icons_{};
    xcb_window_t shown_ = XCB_WINDOW_NONE;
};

class TrayLooks : public LooksSession, public testing::WithParamInterface<Composition> {
protected:
    void startBeside(const std::string& clickAction = "revealInMenuBar") {
        start("1280x720x24", clickAction);
        startComposition(GetParam());
        startIcons();
    }
    /// Until the screen shows what the bar does.
    void settle() {
        EXPECT_TRUE(comesToRest(milliseconds(100)));
        if (GetParam() != Composition::none)
            untilComposited();
    }
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
    const auto settings = home_ / "xsettingsd.conf";
    const auto write = [&](const std::string& theme) {
        std::ofstream(settings) << "Net/ThemeName \"" << theme << "\"\n";
    };
    write("Adwaita");
    startBeside();
    const auto manager = run({"xsettingsd", "-c", settings});
    toggleTo(true);
    expectSeen(firstColors, lightBar);
    settle();
    write("Adwaita-dark");
    manager.signal(SIGHUP);
    expectSeen(firstColors, darkBar);
    toggleTo(false);
    // Seen by nobody, it changes as well.
    write("Adwaita");
    manager.signal(SIGHUP);
    ASSERT_TRUE(eventually([&] { return x().pixel(600, 5) == lightBar; }));
    toggleTo(true);
    expectSeen(firstColors, lightBar);
}

TEST_P(TrayLooks, OfFormerTimesAreNotSeenWhenIconsComeBack) {
    startBeside();
    toggleTo(true);
    expectSeen(firstColors, lightBar);
    auto present = otherColors;
    auto former = firstColors;
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
