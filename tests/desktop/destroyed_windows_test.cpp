#include "settings_session.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace velmo::desktop {

namespace {

/// Another program destroys what Velmo has open.
class DestroyedWindows : public SettingsSession {
protected:
    void start(nlohmann::json defaults) {
        startWindowManager();
        defaults.emplace("autoRehide", false);
        writeDefaults(defaults);
        startVelmo();
    }
    void destroy(xcb_window_t window) const {
        xcb_destroy_window(x().raw(), window);
        ASSERT_FALSE(x().exists(window));
    }
    std::optional<xcb_window_t> shown(const std::string& title) const {
        const auto window = x().windowTitled(title);
        return window && x().isViewable(*window) ? window : std::nullopt;
    }
    /// Without so many rows at the top.
    std::vector<std::uint32_t> pictureOf(xcb_window_t window, int without = 0) {
        movePointer(900, 650);
        EXPECT_TRUE(comesToRest());
        const auto area = x().area(window).value_or(Area{});
        return x().pixels({area.x, area.y + without, area.width, area.height - without});
    }
    bool hasKeyboard(xcb_window_t window) const { return x().inputFocus() == window; }
    /// The one that is open below the toggle.
    std::optional<xcb_window_t> menu() const {
        const auto place = *x().area(toggle());
        const auto window = x().topAt(place.x - 20, place.y + place.height + 30);
        return x().property(window, "WM_CLASS").starts_with("velmo") ? std::optional(window) : std::nullopt;
    }
};

TEST_F(DestroyedWindows, SettingsOpenAgainAsTheyWere) {
    start({});
    openSettings();
    const auto first = *settingsWindow();
    const auto place = *x().area(first);
    const auto picture = pictureOf(first);
    destroy(first);
    EXPECT_TRUE(stays([&] { return !settingsWindow(); }, milliseconds(300)));
    for (int round = 0; round < 2; ++round) {
        openSettings();
        const auto again = *settingsWindow();
        EXPECT_TRUE(eventually([&] { return activeWindow() == again && hasKeyboard(again); }));
        EXPECT_TRUE(eventually([&] { return x().area(again) == place; }));
        EXPECT_EQ(pictureOf(again), picture);
        const auto other = startOrdinaryWindow();
        ASSERT_TRUE(eventually([&] { return activeWindow() == other; }));
        startAgain();
        EXPECT_TRUE(eventually([&] { return activeWindow() == again; })) << "brought to the front";
        closeWindow(other);
        ASSERT_TRUE(eventually([&] { return !x().exists(other); }));
        ASSERT_NO_FATAL_FAILURE(closeSettings());
    }
}

TEST_F(DestroyedWindows, PanelOpensAgainWithTheNextClick) {
    start({{"clickAction", "showPanel"}});
    openPanel();
    const auto first = *shown("Velmo.Panel");
    const auto picture = pictureOf(first);
    destroy(first);
    EXPECT_TRUE(stays([&] { return !panel(); }, milliseconds(300)));
    openPanel();
    EXPECT_EQ(pictureOf(*shown("Velmo.Panel")), picture);
    click(toggle());
    EXPECT_TRUE(eventually([&] { return !panel(); }));
}

TEST_F(DestroyedWindows, CalendarOpensAgainWithTheNextClick) {
    start(clockDefaults());
    const auto open = [&] {
        click(itemTitled("Velmo.Clock"));
        ASSERT_TRUE(eventually([&] {
            const auto window = shown("Velmo.Popover");
            return window && hasKeyboard(*window);
        }));
    };
    open();
    // The date and the time, which goes on.
    constexpr int header = 72;
    const auto first = *shown("Velmo.Popover");
    const auto picture = pictureOf(first, header);
    destroy(first);
    EXPECT_TRUE(stays([&] { return !shown("Velmo.Popover"); }, milliseconds(300)));
    open();
    EXPECT_EQ(pictureOf(*shown("Velmo.Popover"), header), picture);
    xdotool({"key", "Escape"});
    EXPECT_TRUE(eventually([&] { return !shown("Velmo.Popover"); }));
}

TEST_F(DestroyedWindows, MenuOpensAgainAndWorks) {
    start({});
    const auto open = [&] {
        click(toggle(), rightButton);
        ASSERT_TRUE(eventually([&] { return menu().has_value(); }));
    };
    open();
    destroy(*menu());
    EXPECT_TRUE(stays([&] { return !menu(); }, milliseconds(300)));
    const bool wasExpanded = dividerIsExpanded();
    click(toggle());
    EXPECT_TRUE(eventually([&] { return dividerIsExpanded() != wasExpanded; }))
        << "clicks reach the bar as if it had been closed";
    open();
    xdotool({"key", "Down"});
    xdotool({"key", "Return"});
    EXPECT_TRUE(eventually([&] { return !menu() && dividerIsExpanded() == wasExpanded; }));
}

TEST_F(DestroyedWindows, BarEndsTheProgramWhichCanBeStartedAgain) {
    start({});
    destroy(bar());
    EXPECT_EQ(velmo().wait(milliseconds(3000)), 1);
    startVelmo();
    EXPECT_TRUE(isOnScreen(toggle()));
}

}  // namespace

}  // namespace velmo::desktop
