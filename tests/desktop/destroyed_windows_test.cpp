#include "settings_session.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace velmo::desktop {

namespace {

/// Another program destroys what Velmo shows.
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
    /// Without so many rows at the top.
    std::vector<std::uint32_t> pictureOf(xcb_window_t window, int without = 0) {
        movePointer(900, 650);
        EXPECT_TRUE(comesToRest());
        const auto area = x().area(window).value_or(Area{});
        EXPECT_GT(area.height, without);
        return x().pixels({area.x, area.y + without, area.width, area.height - without});
    }
    std::vector<std::uint32_t> typesOf(xcb_window_t window) const {
        return x().cardinals(window, "_NET_WM_WINDOW_TYPE");
    }
    bool hasKeyboard(xcb_window_t window) const { return x().inputFocus() == window; }
    /// The one that is open below the toggle.
    std::optional<xcb_window_t> menu() const {
        const auto place = *x().area(toggle());
        const auto window = x().topAt(place.x - 20, place.y + place.height + 30);
        return x().property(window, "WM_CLASS").starts_with("velmo") ? std::optional(window) : std::nullopt;
    }
    void openToggleMenu() const {
        click(toggle(), rightButton);
        ASSERT_TRUE(eventually([&] { return menu().has_value(); }));
    }
    void openCalendar() const {
        click(itemTitled("Velmo.Clock"));
        ASSERT_TRUE(eventually([&] {
            const auto window = shown("Velmo.Popover");
            return window && hasKeyboard(*window);
        }));
    }
    void expectToEndAndToStartAgain() {
        EXPECT_EQ(velmo().wait(milliseconds(3000)), 1);
        EXPECT_EQ(std::filesystem::file_size(home_ / "velmo.err"), 0U) << "Velmo is silent";
        startVelmo();
    }
};

TEST_F(DestroyedWindows, SettingsOpenAgainAsTheyWere) {
    start({});
    ASSERT_NO_FATAL_FAILURE(openSettings());
    const auto first = *settingsWindow();
    const auto place = *x().area(first);
    const auto types = typesOf(first);
    const auto picture = pictureOf(first);
    destroy(first);
    EXPECT_TRUE(stays([&] { return !settingsWindow(); }, milliseconds(300)));
    for (int round = 0; round < 2; ++round) {
        ASSERT_NO_FATAL_FAILURE(openSettings());
        const auto again = *settingsWindow();
        EXPECT_TRUE(eventually([&] { return activeWindow() == again && hasKeyboard(again); }));
        EXPECT_TRUE(eventually([&] { return x().area(again) == place; }));
        EXPECT_EQ(typesOf(again), types);
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
    ASSERT_NO_FATAL_FAILURE(openPanel());
    const auto first = *shown("Velmo.Panel");
    const auto types = typesOf(first);
    EXPECT_FALSE(types.empty());
    const auto picture = pictureOf(first);
    destroy(first);
    EXPECT_TRUE(stays([&] { return !panel(); }, milliseconds(300)));
    ASSERT_NO_FATAL_FAILURE(openPanel());
    EXPECT_EQ(typesOf(*shown("Velmo.Panel")), types);
    EXPECT_EQ(pictureOf(*shown("Velmo.Panel")), picture);
    click(toggle());
    EXPECT_TRUE(eventually([&] { return !panel(); }));
}

TEST_F(DestroyedWindows, CalendarOpensAgainWithTheNextClick) {
    // The date and the time, which goes on.
    constexpr int header = 72;
    start(clockDefaults());
    ASSERT_NO_FATAL_FAILURE(openCalendar());
    const auto first = *shown("Velmo.Popover");
    const auto picture = pictureOf(first, header);
    destroy(first);
    EXPECT_TRUE(stays([&] { return !shown("Velmo.Popover"); }, milliseconds(300)));
    ASSERT_NO_FATAL_FAILURE(openCalendar());
    EXPECT_EQ(pictureOf(*shown("Velmo.Popover"), header), picture);
    xdotool({"key", "Escape"});
    EXPECT_TRUE(eventually([&] { return !shown("Velmo.Popover"); }));
}

TEST_F(DestroyedWindows, MenuOpensAgainAndWorks) {
    start({});
    ASSERT_NO_FATAL_FAILURE(openToggleMenu());
    destroy(*menu());
    EXPECT_TRUE(stays([&] { return !menu(); }, milliseconds(300)));
    const bool wasExpanded = dividerIsExpanded();
    click(toggle());
    EXPECT_TRUE(eventually([&] { return dividerIsExpanded() != wasExpanded; }))
        << "clicks reach the bar as if it had been closed";
    ASSERT_NO_FATAL_FAILURE(openToggleMenu());
    xdotool({"key", "Down"});
    xdotool({"key", "Return"});
    EXPECT_TRUE(eventually([&] { return !menu() && dividerIsExpanded() == wasExpanded; }));
}

TEST_F(DestroyedWindows, BarEndsTheProgramWhichCanBeStartedAgain) {
    start({});
    destroy(bar());
    expectToEndAndToStartAgain();
}

TEST_F(DestroyedWindows, BarEndsTheProgramAlsoWhereAMenuIsOpen) {
    start({});
    ASSERT_NO_FATAL_FAILURE(openToggleMenu());
    destroy(bar());
    expectToEndAndToStartAgain();
}

}  // namespace

}  // namespace velmo::desktop
