#include "accessible_tree.h"
#include "built_files.h"
#include "bus_program.h"
#include "icons_session.h"

#include <algorithm>
#include <cmath>
#include <csignal>
#include <fstream>

namespace velmo::desktop {

namespace {

constexpr std::uint32_t colorOfBusIcon = 0xff0000;
constexpr std::uint32_t lightPanel = 0xfafafc;
constexpr std::uint32_t darkPanel = 0x2c2c30;
constexpr std::uint32_t lightSettings = 0xf3f3f5;
/// Longer than a window waits until it takes its place for the one where the user wants it.
constexpr milliseconds restsAfter{600};

/// A desktop whose settings change while Velmo runs.
class AppearanceSession : public IconsSession {
protected:
    void SetUp() override {
        IconsSession::SetUp();
        startServer("2560x2000x24");
        startWindowManager();
        startSessionBus();
        write("Adwaita", 1);
        manager_.emplace(run({"xsettingsd", "-c", home_ / "xsettingsd.conf"}));
        ASSERT_TRUE(eventually([&] { return x().selectionOwner("_XSETTINGS_S0") != XCB_WINDOW_NONE; }));
    }
    void TearDown() override {
        program_.reset();
        IconsSession::TearDown();
        manager_.reset();
    }

    void write(const std::string& theme, double scale) const {
        std::ofstream(home_ / "xsettingsd.conf")
            << "Net/ThemeName \"" << theme << "\"\nXft/DPI " << std::lround(scale * 96 * 1024) << '\n';
    }
    void set(const std::string& theme, double scale) const {
        write(theme, scale);
        manager_->signal(SIGHUP);
    }

    /// With an icon of either kind, both right of the divider.
    void start(nlohmann::json defaults = nlohmann::json::object()) {
        defaults.emplace("autoRehide", false);
        writeDefaults(defaults);
        startVelmo();
        dockIcon("window");
        program_.emplace(busAddress());
        ASSERT_TRUE(eventually([&] { return program_->isTaken("org.freedesktop.StatusNotifierWatcher"); }));
        program_->addItem("/StatusNotifierItem", "bus");
        program_->setText("/StatusNotifierItem", "Title", "bus");
        program_->registerItem("/StatusNotifierItem");
        ASSERT_TRUE(eventually([&] { return isOnScreen(itemTitled("bus")); }));
        before_ = names();
        moveTo(farLeft, 500);
    }

    void openCalendar() {
        start(clockDefaults());
        click(*x().windowTitled("Velmo.Clock"));
        ASSERT_TRUE(eventually([&] { return areaOfWindow("Velmo.Popover").width > 100; }));
    }

    static int pixels(double points, double scale) { return static_cast<int>(std::lround(points * scale)); }
    /// The area that has that colour on the screen.
    Area areaOfColor(std::uint32_t color) const {
        const auto place = *x().area(bar());
        const auto seen = x().pixels(place);
        Area found{place.width, place.height, 0, 0};
        int right = 0;
        int bottom = 0;
        for (int pixelY = 0; pixelY < place.height; ++pixelY) {
            for (int pixelX = 0; pixelX < place.width; ++pixelX) {
                if (seen[static_cast<std::size_t>(pixelY * place.width + pixelX)] != color)
                    continue;
                found.x = std::min(found.x, pixelX);
                found.y = std::min(found.y, pixelY);
                right = std::max(right, pixelX + 1);
                bottom = std::max(bottom, pixelY + 1);
            }
        }
        return {found.x, found.y, std::max(right - found.x, 0), std::max(bottom - found.y, 0)};
    }
    bool barHasScale(double scale) const {
        return areLaidOut(screen, scale) && areaOf("Toggle").width == pixels(31, scale);
    }
    void expectIconsHaveScale(double scale) const {
        const int side = pixels(20, scale);
        EXPECT_TRUE(eventually([&] {
            const auto area = areaOfColor(iconColor);
            return area.width == side && area.height == side;
        })) << areaOfColor(iconColor).width;
        EXPECT_TRUE(eventually([&] {
            const auto area = areaOfColor(colorOfBusIcon);
            return area.width == side && area.height == side;
        })) << areaOfColor(colorOfBusIcon).width;
    }

    /// Of a window of ours, without its frame.
    Area areaOfWindow(const std::string& title) const {
        const auto window = shown(title);
        return window ? x().area(*window).value_or(Area{}) : Area{};
    }
    bool hasSize(const std::string& title, const Area& former, double scale) const {
        const auto area = areaOfWindow(title);
        // Texts are not wider by the same factor to the pixel.
        const double slack = 0.06;
        return std::abs(area.width - former.width * scale) <= former.width * scale * slack &&
               std::abs(area.height - former.height * scale) <= former.height * scale * slack;
    }
    void openSettings() const {
        outputOf({velmoProgram}, environment_);
        ASSERT_TRUE(eventually([&] { return shown("Velmo Settings").has_value(); }));
    }
    void closeSettings() const {
        closeWindow(*shown("Velmo Settings"));
        ASSERT_TRUE(eventually([&] { return !shown("Velmo Settings"); }));
    }
    void moveSettings(int pixelX, int pixelY) const {
        xdotool({"windowmove", std::to_string(*shown("Velmo Settings")), std::to_string(pixelX),
                 std::to_string(pixelY)});
        ASSERT_TRUE(eventually([&] { return remembersPlace(); })) << "moved by the user";
    }
    /// The toolkit may learn of it later than the bar.
    void expectEverythingHasScale(double scale) {
        EXPECT_TRUE(eventually([&] { return barHasScale(scale); })) << scale;
        EXPECT_TRUE(comesToRest());
    }
    /// As far as a window manager's frame allows.
    bool settingsAreAt(int pixelX, int pixelY) const {
        const int frame = 40;
        const auto area = areaOfWindow("Velmo Settings");
        return std::abs(area.x - pixelX) <= frame && std::abs(area.y - pixelY) <= frame;
    }
    bool remembersPlace() const {
        const auto defaults = readDefaults();
        return std::any_of(defaults.items().begin(), defaults.items().end(),
                           [](const auto& entry) { return entry.key().starts_with("windowPlace."); });
    }
    /// Each corner of it, and not what was painted in another scale.
    bool isPainted(const Area& window, std::uint32_t background, double scale) const {
        const int inset = pixels(4, scale);
        const int right = window.x + window.width - 1 - inset;
        const int bottom = window.y + window.height - 1 - inset;
        for (const int pixelX : {window.x + inset, right}) {
            for (const int pixelY : {window.y + inset, bottom}) {
                if (x().pixel(pixelX, pixelY) != background)
                    return false;
            }
        }
        return true;
    }
    bool hangsBelowBar(const std::string& title, double scale) const {
        const auto area = areaOfWindow(title);
        return area.y == pixels(26 + 6, scale) && area.x + area.width <= screen.width;
    }

    const Area screen = {0, 0, 2560, 2000};
    const std::vector<double> scales = {1.5, 2, 1};
    std::optional<ChildProcess> manager_;
    std::optional<BusProgram> program_;
    Names before_;
};

TEST_F(AppearanceSession, ScaleIsFollowedByTheBarAndIconsOfEitherKind) {
    start();
    ASSERT_TRUE(eventually([&] { return barHasScale(1); }));
    expectIconsHaveScale(1);
    for (const double scale : scales) {
        set("Adwaita", scale);
        EXPECT_TRUE(eventually([&] { return barHasScale(scale); })) << scale;
        EXPECT_EQ(names(), before_);
        expectIconsHaveScale(scale);
    }
}

TEST_F(AppearanceSession, ScaleIsFollowedWhileIconsAreHiddenAndAreRevealedThen) {
    start();
    hideIcon("window");
    hideIcon("bus");
    for (const double scale : scales) {
        set("Adwaita", scale);
        EXPECT_TRUE(eventually([&] { return barHasScale(scale); })) << scale;
        EXPECT_TRUE(isUnseen("window") && isUnseen("bus"));
        click(toggle());
        ASSERT_TRUE(eventually([&] { return !dividerIsExpanded() && areLaidOut(screen, scale); })) << scale;
        expectIconsHaveScale(scale);
        click(toggle());
        ASSERT_TRUE(eventually([&] { return isUnseen("window") && isUnseen("bus"); }));
    }
}

TEST_F(AppearanceSession, ScaleIsFollowedByTheOpenPanel) {
    start({{"clickAction", "showPanel"}});
    hideIcon("window");
    hideIcon("bus");
    openPanelWindow();
    const auto former = strip();
    for (const double scale : scales) {
        set("Adwaita", scale);
        EXPECT_TRUE(eventually([&] {
            return hasSize("Velmo.Panel", former, scale) && hangsBelowBar("Velmo.Panel", scale) &&
                   isPainted(strip(), lightPanel, scale);
        })) << scale
            << ": " << strip().x << ", " << strip().y << ", " << strip().width << " x " << strip().height;
    }
    EXPECT_EQ(strip(), former);
}

TEST_F(AppearanceSession, ScaleIsFollowedByTheOpenCalendar) {
    openCalendar();
    const auto former = areaOfWindow("Velmo.Popover");
    for (const double scale : scales) {
        set("Adwaita", scale);
        EXPECT_TRUE(eventually([&] {
            return hasSize("Velmo.Popover", former, scale) && hangsBelowBar("Velmo.Popover", scale) &&
                   isPainted(areaOfWindow("Velmo.Popover"), lightPanel, scale);
        })) << scale
            << ": " << areaOfWindow("Velmo.Popover").x << ", " << areaOfWindow("Velmo.Popover").y << ", "
            << areaOfWindow("Velmo.Popover").width << " x " << areaOfWindow("Velmo.Popover").height;
    }
}

TEST_F(AppearanceSession, ScaleIsFollowedByTheOpenSettings) {
    start();
    outputOf({velmoProgram}, environment_);
    ASSERT_TRUE(eventually([&] { return areaOfWindow("Velmo Settings").width > 100; }));
    const auto former = areaOfWindow("Velmo Settings");
    for (const double scale : scales) {
        set("Adwaita", scale);
        EXPECT_TRUE(eventually([&] {
            const auto area = areaOfWindow("Velmo Settings");
            return hasSize("Velmo Settings", former, scale) && isPainted(area, lightSettings, scale);
        })) << scale
            << ": " << areaOfWindow("Velmo Settings").width << " x " << areaOfWindow("Velmo Settings").height
            << " after " << former.width << " x " << former.height;
        // What the user has not moved stays in the middle, whatever that is when they are opened again.
        EXPECT_TRUE(stays([&] { return !remembersPlace(); }, restsAfter)) << scale;
    }
    const auto area = areaOfWindow("Velmo Settings");
    // Whoever moves them within a second after the scale has changed is not the user.
    std::this_thread::sleep_for(std::chrono::seconds(1));
    moveSettings(area.x + 300, area.y + 100);
}

TEST_F(AppearanceSession, ClosedSettingsOpenInAnotherScaleWhereTheUserHadThem) {
    start();
    openSettings();
    moveSettings(1400, 700);
    for (const double scale : scales) {
        closeSettings();
        set("Adwaita", scale);
        expectEverythingHasScale(scale);
        openSettings();
        EXPECT_TRUE(eventually([&] { return settingsAreAt(1400, 700); }))
            << scale << ": " << areaOfWindow("Velmo Settings").x << ", " << areaOfWindow("Velmo Settings").y;
    }
}

TEST_F(AppearanceSession, SettingsAcrossTwoMonitorsOpenWhereTheUserHadThem) {
    addMonitor("*left", {0, 0, 1280, 2000}, "screen");
    addMonitor("right", {1280, 0, 1280, 2000}, "none");
    start();
    set("Adwaita", 2);
    ASSERT_TRUE(comesToRest());
    openSettings();
    for (const int left : {1000, 1200, 900}) {
        moveSettings(left, 700);
        ASSERT_TRUE(comesToRest());
        closeSettings();
        openSettings();
        EXPECT_TRUE(stays([&] { return settingsAreAt(left, 700); }, moment))
            << left << ": " << areaOfWindow("Velmo Settings").x << ", " << areaOfWindow("Velmo Settings").y;
    }
    stopVelmo();
    startVelmo();
    openSettings();
    EXPECT_TRUE(eventually([&] { return settingsAreAt(900, 700); }))
        << areaOfWindow("Velmo Settings").x << ", " << areaOfWindow("Velmo Settings").y;
}

TEST_F(AppearanceSession, OpenSettingsStayInAnotherScaleWhereTheUserHasThem) {
    start();
    openSettings();
    moveSettings(1400, 700);
    const auto former = areaOfWindow("Velmo Settings");
    for (const double scale : scales) {
        set("Adwaita", scale);
        EXPECT_TRUE(eventually([&] {
            return hasSize("Velmo Settings", former, scale) && settingsAreAt(1400, 700);
        })) << scale
            << ": " << areaOfWindow("Velmo Settings").x << ", " << areaOfWindow("Velmo Settings").y;
    }
}

/// Of the second one there is nothing, or the right half of the screen.
class ClosedSettings : public AppearanceSession, public testing::WithParamInterface<int> {
protected:
    void addMonitors() const {
        if (GetParam() > 0)
            addMonitor("*left", {0, 0, 1280, 2000}, "screen");
        if (GetParam() > 1)
            addMonitor("right", {1280, 0, 1280, 2000}, "none");
    }
};

INSTANTIATE_TEST_SUITE_P(Monitors, ClosedSettings, testing::Values(0, 1, 2),
                         [](const auto& count) { return "Of" + std::to_string(count.param); });

TEST_P(ClosedSettings, OpenInTheScaleThatHasComeMeanwhile) {
    start();
    openSettings();
    const auto former = areaOfWindow("Velmo Settings");
    closeSettings();
    addMonitors();
    bool hides = false;
    for (const double scale : scales) {
        set("Adwaita", scale);
        ASSERT_TRUE(eventually([&] { return x().area(bar())->height == pixels(26, scale); })) << scale;
        openSettings();
        EXPECT_TRUE(eventually([&] { return hasSize("Velmo Settings", former, scale); }))
            << scale << ": " << areaOfWindow("Velmo Settings").width << " x "
            << areaOfWindow("Velmo Settings").height;
        // The first box of the tab that is clicked; another one was chosen before.
        for (const double tab : {110, 190}) {
            xdotool({"mousemove", "--window", std::to_string(*shown("Velmo Settings")),
                     std::to_string(pixels(tab, scale)), std::to_string(pixels(35, scale)), "click", "1"});
            ASSERT_TRUE(eventually([&] { return x().keyboardOwner() == *shown("Velmo Settings"); }));
        }
        xdotool({"key", "Tab", "space"});
        hides = !hides;
        EXPECT_TRUE(eventually([&] { return readDefaults().value("autoRehide", true) == hides; })) << scale;
        closeSettings();
    }
}

TEST_F(AppearanceSession, MenusStayInAnotherLookAndCloseInAnotherScale) {
    start();
    click(toggle(), rightButton);
    ASSERT_TRUE(eventually([&] { return menuIsOpen(); }));
    set("Adwaita-dark", 1);
    ASSERT_TRUE(eventually([&] { return x().pixel(640, 5) == darkBar; }));
    EXPECT_TRUE(stays([&] { return menuIsOpen(); }, moment));
    set("Adwaita-dark", 2);
    EXPECT_TRUE(eventually([&] { return !menuIsOpen(); }));
    EXPECT_TRUE(eventually([&] { return barHasScale(2); }));
}

TEST_F(AppearanceSession, LightAndDarkAreFollowedByTheOpenCalendar) {
    openCalendar();
    const auto former = areaOfWindow("Velmo.Popover");
    for (const bool dark : {false, true, false}) {
        set(dark ? "Adwaita-dark" : "Adwaita", 1);
        EXPECT_TRUE(eventually([&] { return isPainted(former, dark ? darkPanel : lightPanel, 1); })) << dark;
        EXPECT_EQ(areaOfWindow("Velmo.Popover"), former);
    }
}

TEST_F(AppearanceSession, LightAndDarkAreFollowedByAllThatIsOpen) {
    start({{"clickAction", "showPanel"}});
    outputOf({velmoProgram}, environment_);
    ASSERT_TRUE(eventually([&] { return shown("Velmo Settings").has_value(); }));
    hideIcon("window");
    openPanelWindow();
    struct Look {
        std::string theme;
        std::uint32_t bar;
        std::uint32_t panel;
        std::uint32_t settings;
    };
    const Look light = {"Adwaita", lightBar, lightPanel, lightSettings};
    const Look dark = {"Adwaita-dark", darkBar, darkPanel, 0x232326};
    for (const auto& look : {light, dark, light}) {
        set(look.theme, 1);
        EXPECT_TRUE(eventually([&] { return x().pixel(640, 5) == look.bar; })) << look.theme;
        const auto panel = strip();
        EXPECT_TRUE(eventually([&] { return x().pixel(panel.x + 4, panel.midY()) == look.panel; }))
            << look.theme << std::hex << x().pixel(panel.x + 4, panel.midY());
        const auto settings = areaOfWindow("Velmo Settings");
        EXPECT_TRUE(eventually([&] {
            return x().pixel(settings.x + 4, settings.y + settings.height - 4) == look.settings;
        })) << look.theme
            << std::hex << x().pixel(settings.x + 4, settings.y + settings.height - 4);
    }
}

/// Beside its own settings, the desktop has a portal for those of all programs.
TEST_F(AppearanceSession, PreferenceOfTheUserWinsOverTheThemesName) {
    const auto file = home_ / "scheme";
    const auto prefer = [&](int scheme) { std::ofstream(file) << scheme; };
    const auto isDark = [&](bool dark) {
        return eventually([&] { return x().pixel(640, 5) == (dark ? darkBar : lightBar); });
    };
    start();
    ASSERT_TRUE(isDark(false));
    prefer(1);
    std::optional<ChildProcess> portal;
    const auto startPortal = [&] {
        portal.emplace(
            run({"/usr/bin/python3", std::string(clientScripts) + "/color_scheme_portal.py", file}));
        ASSERT_TRUE(eventually([&] { return program_->isTaken("org.freedesktop.portal.Desktop"); }));
    };
    startPortal();
    EXPECT_TRUE(isDark(true)) << "the portal has come";
    prefer(0);
    portal->signal(SIGHUP);
    EXPECT_TRUE(isDark(false)) << "no preference";
    set("Adwaita-dark", 1);
    EXPECT_TRUE(isDark(true)) << "the theme's name";
    prefer(2);
    portal->signal(SIGHUP);
    EXPECT_TRUE(isDark(false)) << "light";
    portal->end();
    ASSERT_TRUE(eventually([&] { return !program_->isTaken("org.freedesktop.portal.Desktop"); }));
    EXPECT_TRUE(stays([&] { return x().pixel(640, 5) == lightBar; }, moment)) << "still what was preferred";
    prefer(1);
    set("Adwaita", 1);
    startPortal();
    EXPECT_TRUE(isDark(true)) << "asked anew";
    // Who only claims to be the portal is not heard.
    program_->emit("/org/freedesktop/portal/desktop", "org.freedesktop.portal.Settings", "SettingChanged",
                   [](sd_bus_message* message) {
                       return sd_bus_message_append(message, "ssv", "org.freedesktop.appearance",
                                                    "color-scheme", "u", 2U);
                   });
    EXPECT_TRUE(stays([&] { return x().pixel(640, 5) == darkBar; }, moment));
    stopVelmo();
    startVelmo();
    EXPECT_TRUE(isDark(true)) << "from the start";
}

/// Assistive programs are told the texts of tooltips.
class ToolTips : public AppearanceSession {
protected:
    void SetUp() override {
        AppearanceSession::SetUp();
        tree_.emplace(environment_);
    }
    void TearDown() override {
        tree_.reset();
        AppearanceSession::TearDown();
    }
    bool isShown(const std::string& text) const { return !tree_->namesIn(text).empty(); }
    void expectToolTip(const std::string& item, const std::string& text) {
        const auto place = areaOf(item);
        EXPECT_FALSE(isShown(text));
        movePointer(place.midX(), place.midY());
        EXPECT_TRUE(eventually([&] { return isShown(text); })) << item;
        movePointer(farLeft, 500);
        EXPECT_TRUE(eventually([&] { return !isShown(text); })) << item;
    }

    std::optional<AccessibleTree> tree_;
};

TEST_F(ToolTips, SayWhatItemsOfOursAreFor) {
    start(
        {{"alwaysHiddenEnabled", true},
         {"clockEnabled", true},
         {"clockFormat", "HH:mm"},
         {"statusItemOrder", {"Velmo.Toggle", "Velmo.Clock", "Velmo.Divider", "Velmo.AlwaysHiddenDivider"}}});
    clickHolding("Alt_L", toggle());
    ASSERT_TRUE(eventually([&] { return x().area(alwaysHiddenDivider())->width == 12; }));
    movePointer(farLeft, 500);
    expectToolTip("Toggle", "Velmo — click to show or hide menu bar items, ⌥-click for always-hidden items");
    expectToolTip("Divider", "Velmo divider — ⌘-drag icons to the left of this to hide them");
    expectToolTip(
        "AlwaysHiddenDivider",
        "Velmo always-hidden divider — icons left of this stay hidden unless you ⌥-click the toggle");
    expectToolTip("Clock", "velmo clock — click for a calendar, ⌘-drag to move");
}

}  // namespace

}  // namespace velmo::desktop
