#include "built_files.h"
#include "icons_session.h"

#include <algorithm>
#include <cstdlib>
#include <string>

namespace velmo::desktop {

namespace {

struct Monitor {
    std::string name;
    Area area;
};

/// A root window large enough for several monitors, and a bar with two icons that are shown and two that are
/// hidden.
class ScreensSession : public IconsSession {
protected:
    void SetUp() override {
        IconsSession::SetUp();
        startServer("2560x1440x24");
        startWindowManager();
    }

    /// The first one is the primary one.
    void setMonitors(const std::vector<Monitor>& monitors) const {
        for (const auto& monitor : monitors)
            setMonitor(monitor, monitor.name == monitors.front().name);
    }
    /// One that is there already goes and comes anew.
    void setMonitor(const Monitor& monitor, bool isPrimary) const {
        const auto& [name, area] = monitor;
        const auto side = [](int pixels) {
            return std::to_string(pixels) + "/" + std::to_string(pixels / 4);
        };
        remove(monitor);
        outputOf({"xrandr", "--setmonitor", (isPrimary ? "*" : "") + name,
                  side(area.width) + "x" + side(area.height) + "+" + std::to_string(area.x) + "+" +
                      std::to_string(area.y),
                  // The one that has the output keeps the server from adding one of its own.
                  name == withOutput ? "screen" : "none"},
                 environment_);
    }
    void makePrimary(const Monitor& monitor) const { setMonitor(monitor, true); }
    void remove(const Monitor& monitor) const {
        outputOf({"xrandr", "--delmonitor", monitor.name}, environment_);
    }

    /// Another resolution of the one monitor that there is.
    void setMode(int width, int height) const {
        const auto name = std::to_string(width) + "x" + std::to_string(height) + "-test";
        std::vector<std::string> mode = {"xrandr", "--newmode", name, "60"};
        for (const int side : {width, height}) {
            for (const int blank : {0, 10, 20, 30})
                mode.push_back(std::to_string(side + blank));
        }
        outputOf(mode, environment_);
        outputOf({"xrandr", "--addmode", "screen", name}, environment_);
        outputOf({"xrandr", "--output", "screen", "--mode", name}, environment_);
        ASSERT_TRUE(eventually([&] { return x().area(x().root())->width == width; }));
    }

    void start(const nlohmann::json& defaults = nlohmann::json::object()) {
        nlohmann::json complete = defaults;
        complete.emplace("autoRehide", false);
        writeDefaults(complete);
        startVelmo();
        dockIcons({"one", "two", "three", "four"});
        hideIcon("four");
        hideIcon("three");
        before_ = names();
        ASSERT_EQ(before_, (Names{"Toggle", "one", "two", "Divider", "three", "four"}));
        // Neither the toggle's tooltip nor a hover is wanted.
        moveTo(x().area(bar())->x + 300, x().area(bar())->y + 400);
    }
    void startRevealed(const nlohmann::json& defaults = nlohmann::json::object()) {
        start(defaults);
        reveal();
    }
    void reveal() const {
        click(toggle());
        ASSERT_TRUE(eventually([&] { return !dividerIsExpanded(); }));
        moveTo(x().area(bar())->x + 300, x().area(bar())->y + 400);
    }

    bool iconsAreSeenOnlyOn(const Area& monitor) const {
        const auto root = *x().area(x().root());
        const auto pixels = x().pixels(root);
        for (std::size_t place = 0; place < pixels.size(); ++place) {
            const int pixelX = static_cast<int>(place) % root.width;
            const int pixelY = static_cast<int>(place) / root.width;
            const bool isInside = pixelX >= monitor.x && pixelX < monitor.x + monitor.width &&
                                  pixelY >= monitor.y && pixelY < monitor.y + monitor.height;
            if (pixels[place] == iconColor && !isInside)
                return false;
        }
        return true;
    }
    /// Left, right, top, bottom, then begin and end along each of them.
    std::vector<std::uint32_t> strut() const {
        for (const auto window : windowsBelow(x().root())) {
            if (x().property(window, "_NET_WM_NAME") == "Velmo menu bar space")
                return x().cardinals(window, "_NET_WM_STRUT_PARTIAL");
        }
        return {};
    }
    std::vector<xcb_window_t> windowsBelow(xcb_window_t window) const {
        auto found = x().children(window);
        for (const auto child : std::vector(found)) {
            const auto grandchildren = x().children(child);
            found.insert(found.end(), grandchildren.begin(), grandchildren.end());
        }
        return found;
    }
    static std::vector<std::uint32_t> strutOf(const Area& monitor, bool isAtTheTop = true) {
        const auto number = [](int value) { return static_cast<std::uint32_t>(value); };
        return {0,
                0,
                isAtTheTop ? number(monitor.y + barThickness) : 0,
                0,
                0,
                0,
                0,
                0,
                number(monitor.x),
                number(monitor.x + monitor.width - 1),
                0,
                0};
    }
    void expectBarOn(const Area& monitor, bool isAtTheTop = true) const {
        EXPECT_TRUE(eventually([&] { return areLaidOut(monitor); })) << testing::PrintToString(names());
        EXPECT_EQ(names(), before_);
        EXPECT_TRUE(isInside(areaOf("Toggle"), monitor));
        EXPECT_TRUE(isInside(areaOf("one"), monitor));
        const bool isRevealed = !dividerIsExpanded();
        for (const char* name : {"three", "four"}) {
            EXPECT_EQ(isInside(areaOf(name), monitor), isRevealed) << name;
            EXPECT_EQ(isUnseen(name), !isRevealed) << name;
        }
        EXPECT_TRUE(iconsAreSeenOnlyOn(monitor));
        EXPECT_EQ(strut(), strutOf(monitor, isAtTheTop));
    }
    static bool isInside(const Area& area, const Area& monitor) {
        return area.x >= monitor.x && area.y >= monitor.y &&
               area.x + area.width <= monitor.x + monitor.width &&
               area.y + area.height <= monitor.y + monitor.height;
    }

    const std::string withOutput = "left";
    const Monitor left{"left", {0, 0, 1280, 720}};
    const Monitor right{"right", {1280, 0, 1280, 1000}};
    const Monitor below{"below", {0, 720, 1000, 700}};
    Names before_;
};

TEST_F(ScreensSession, BarFollowsThePrimaryMonitorFromSideToSide) {
    setMonitors({left, right});
    start();
    expectBarOn(left.area);
    for (const bool isRevealed : {false, true}) {
        if (isRevealed)
            reveal();
        makePrimary(right);
        expectBarOn(right.area);
        makePrimary(left);
        expectBarOn(left.area);
    }
    // What it does there is done there.
    makePrimary(right);
    expectBarOn(right.area);
    click(toggle());
    ASSERT_TRUE(eventually([&] { return dividerIsExpanded(); }));
    expectBarOn(right.area);
}

TEST_F(ScreensSession, PrimaryMonitorBelowAnotherReservesNothingOfThat) {
    setMonitors({left, below});
    start();
    makePrimary(below);
    expectBarOn(below.area, false);
    reveal();
    expectBarOn(below.area, false);
    makePrimary(left);
    expectBarOn(left.area);
    makePrimary(below);
    expectBarOn(below.area, false);
    remove(below);
    expectBarOn(left.area);
}

TEST_F(ScreensSession, MonitorThatVanishesLeavesTheBarToTheOther) {
    setMonitors({right, left});
    start();
    expectBarOn(right.area);
    remove(right);
    expectBarOn(left.area);
    setMonitors({right, left});
    expectBarOn(right.area);
    reveal();
    remove(right);
    expectBarOn(left.area);
}

TEST_F(ScreensSession, WithoutMonitorsTheBarIsAtTheTopOfTheWholeScreen) {
    setMonitors({right, left});
    start();
    remove(right);
    remove(left);
    expectBarOn({0, 0, 2560, 1440});
    setMonitors({left, right});
    expectBarOn(left.area);
}

TEST_F(ScreensSession, TenQuickChangesEndWhereTheLastOneDoes) {
    setMonitors({left, right, below});
    startRevealed();
    for (int change = 0; change < 10; ++change) {
        const auto& next = change % 3 == 0 ? right : change % 3 == 1 ? below : left;
        setMonitor({next.name, {next.area.x, next.area.y, next.area.width - 10 * change, next.area.height}},
                   true);
    }
    const Area last = {right.area.x, right.area.y, right.area.width - 90, right.area.height};
    expectBarOn(last);
    click(toggle());
    ASSERT_TRUE(eventually([&] { return dividerIsExpanded(); }));
    expectBarOn(last);
}

TEST_F(ScreensSession, ResolutionChangesWhileItemsAreHiddenAndWhileTheyAreRevealed) {
    start();
    for (const bool isRevealed : {false, true}) {
        if (isRevealed)
            reveal();
        for (const auto& [width, height] :
             {std::pair(1024, 768), std::pair(1920, 1080), std::pair(2560, 1440)}) {
            setMode(width, height);
            expectBarOn({0, 0, width, height});
        }
    }
}

TEST_F(ScreensSession, ItemsThatNoLongerFitReturnWithTheRoom) {
    const Monitor narrow{"left", {0, 0, 640, 480}};
    setMonitors({left});
    startRevealed();
    // They stand closer, as close as they can.
    for (int number = 0; number < 60; ++number)
        dockIcon("more" + std::to_string(number));
    before_ = names();
    expectBarOn(left.area);
    const auto wide = items();
    setMonitors({narrow});
    ASSERT_TRUE(eventually([&] { return areLaidOut(narrow.area); }));
    EXPECT_EQ(names(), before_);
    EXPECT_TRUE(isInside(areaOf("Toggle"), narrow.area));
    EXPECT_TRUE(isUnseen("four"));
    setMonitors({left});
    EXPECT_TRUE(eventually([&] { return items() == wide; }));
}

TEST_F(ScreensSession, DragGoesOnWhereTheBarHasGone) {
    setMonitors({right, left});
    startRevealed();
    drag("two", -20);
    remove(right);
    ASSERT_TRUE(eventually([&] { return x().area(bar()) == Area{0, 0, 1280, 26}; }));
    const int target = 1280 - 6 - 31 - 10;
    moveTo(target);
    EXPECT_TRUE(eventually([&] { return areaOf("two").midX() == target; })) << "under the pointer again";
    release();
    before_ = {"Toggle", "two", "one", "Divider", "three", "four"};
    expectBarOn(left.area);
}

TEST_F(ScreensSession, DragOnAMonitorThatVanishesIsPutBackByEscape) {
    setMonitors({right, left});
    startRevealed();
    drag("two", -40);
    remove(right);
    ASSERT_TRUE(eventually([&] { return x().area(bar()) == Area{0, 0, 1280, 26}; }));
    xdotool({"key", "Escape"});
    expectBarOn(left.area);
    release();
    expectBarOn(left.area);
}

TEST_F(ScreensSession, PanelGoesWithTheBar) {
    setMonitors({right, left});
    start({{"clickAction", "showPanel"}});
    openPanelWindow();
    ASSERT_TRUE(isInside(strip(), right.area));
    const int distance = right.area.x + right.area.width - strip().x;
    remove(right);
    EXPECT_TRUE(eventually(
        [&] { return panelWindow() && isInside(strip(), left.area) && strip().y == barThickness + 6; }));
    EXPECT_EQ(left.area.x + left.area.width - strip().x, distance) << "below the same item";
    setMonitors({below, left});
    EXPECT_TRUE(eventually(
        [&] { return isInside(strip(), below.area) && strip().y == below.area.y + barThickness + 6; }));
    // It still works: its first entry is the icon that is farthest left.
    const auto place = strip();
    xdotool({"mousemove", std::to_string(place.x + 20), std::to_string(place.midY()), "click", "1"});
    EXPECT_TRUE(eventually([&] { return !panelWindow() && !dividerIsExpanded(); }));
    EXPECT_TRUE(eventually([&] { return areLaidOut(below.area); }));
}

TEST_F(ScreensSession, CalendarGoesWithTheBar) {
    setMonitors({right, left});
    writeDefaults(clockDefaults());
    startVelmo();
    ASSERT_TRUE(eventually([&] { return areaOf("Clock").width > 20; }));
    click(*x().windowTitled("Velmo.Clock"));
    ASSERT_TRUE(eventually([&] { return shown("Velmo.Popover").has_value(); }));
    const auto place = [&] { return x().area(*shown("Velmo.Popover")).value_or(Area{}); };
    ASSERT_TRUE(eventually([&] { return isInside(place(), right.area) && place().width > 100; }));
    const auto former = place();
    remove(right);
    const Area expected = {former.x - 1280, former.y, former.width, former.height};
    EXPECT_TRUE(eventually([&] { return place() == expected; })) << place().x << ", " << place().y;
    // It is looked at anew each second.
    EXPECT_TRUE(stays([&] { return place() == expected; }, milliseconds(1300)));
    EXPECT_EQ(x().inputFocus(), *shown("Velmo.Popover"));
    xdotool({"key", "Escape"});
    EXPECT_TRUE(eventually([&] { return !shown("Velmo.Popover"); }));
}

TEST_F(ScreensSession, MenuOnAMonitorThatVanishesCloses) {
    setMonitors({right, left});
    startRevealed();
    click(toggle(), rightButton);
    ASSERT_TRUE(eventually([&] { return menuIsOpen(); }));
    remove(right);
    EXPECT_TRUE(eventually([&] { return !menuIsOpen(); }));
    expectBarOn(left.area);
    EXPECT_EQ(x().buttonState(), 0);
    click(toggle());
    EXPECT_TRUE(eventually([&] { return dividerIsExpanded(); })) << "presses are the bar's again";
}

/// Without a window manager, nobody else brings them back; one may do so, or put them elsewhere.
class SettingsOnAScreen : public ScreensSession, public testing::WithParamInterface<std::string> {
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

INSTANTIATE_TEST_SUITE_P(ManagedBy, SettingsOnAScreen,
                         testing::Values("nobody", "openbox", "metacity", "xfwm4"),
                         [](const auto& suite) { return suite.param; });

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

}  // namespace

}  // namespace velmo::desktop
