#include "settings/settings_test.h"

namespace velmo {
namespace {

constexpr const char* screenSettings =
    "x-apple.systempreferences:com.apple.preference.security?Privacy_ScreenCapture";
constexpr const char* accessibilitySettings =
    "x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility";

class PanelTabTest : public SettingsTest {
protected:
    static constexpr std::size_t permissions = 2;

    View permissionRow(std::size_t place) { return rows(permissions).at(place); }
    void expectGranted(std::size_t place) {
        const View row = permissionRow(place);
        EXPECT_TRUE(says(row.children.at(0), "checkmark.circle.fill"));
        EXPECT_EQ(modifierOf<Foreground>(row.children.at(0)), (Foreground{{ColorRole::green, 1}}));
        EXPECT_TRUE(shows(row, "Open Settings"));
        EXPECT_EQ(std::get<Button>(row.children.back().content).style, ButtonStyle::borderless);
        EXPECT_FALSE(shows(row, "Grant…"));
    }
    void expectMissing(std::size_t place) {
        const View row = permissionRow(place);
        EXPECT_TRUE(says(row.children.at(0), "exclamationmark.circle.fill"));
        EXPECT_EQ(modifierOf<Foreground>(row.children.at(0)), (Foreground{{ColorRole::orange, 1}}));
        EXPECT_TRUE(shows(row, "Grant…"));
        EXPECT_EQ(std::get<Button>(row.children.back().content).style, ButtonStyle::automatic);
        EXPECT_FALSE(shows(row, "Open Settings"));
    }
};

TEST_F(PanelTabTest, HasItsSections) {
    open(SettingsTab::panel);
    EXPECT_EQ(sections(),
              (std::vector<Section>{
                  {"Hidden items panel", ""},
                  {"",
                   "Refreshing reveals the icons for a split second to photograph them. Turn this off to "
                   "reuse the last pictures instead."},
                  {"Permissions",
                   "macOS ties these permissions to the app's signature. After rebuilding with a different "
                   "signature you may need to grant them again."}}));
}

TEST_F(PanelTabTest, ExplainsAndOpensThePanel) {
    open(SettingsTab::panel);
    ASSERT_EQ(rows(0).size(), 2U);
    EXPECT_TRUE(says(
        rows(0)[0],
        "The panel shows your hidden icons in a strip under the menu bar and forwards clicks to them. It "
        "works even when the notch leaves no room to reveal the icons in the menu bar itself."));
    EXPECT_TRUE(says(rows(0)[1], "Open the panel now"));
    press(shown(), "Open the panel now");
    EXPECT_EQ(panelRequests_, 1);
}

TEST_F(PanelTabTest, SwitchesTheRefreshing) {
    open(SettingsTab::panel);
    expectToggle("Refresh the pictures when opening the panel", preferences_->refreshPanelOnOpen);
}

TEST_F(PanelTabTest, ShowsWhatIsPermitted) {
    open(SettingsTab::panel);
    expectGranted(0);
    expectGranted(1);
    press(permissionRow(0), "Open Settings");
    press(permissionRow(1), "Open Settings");
    EXPECT_EQ(desktop_.workspace().opened(),
              (std::vector<std::string>{screenSettings, accessibilitySettings}));
    EXPECT_EQ(desktop_.screenCapture().requestCount(), 0U);
    EXPECT_EQ(desktop_.accessibility().promptCount(), 0);
}

TEST_F(PanelTabTest, AsksForWhatIsMissing) {
    desktop_.screenCapture().setGranted(false);
    desktop_.accessibility().setTrusted(false);
    open(SettingsTab::panel);
    expectMissing(0);
    expectMissing(1);
    press(permissionRow(0), "Grant…");
    EXPECT_EQ(desktop_.screenCapture().requestCount(), 1U);
    EXPECT_EQ(desktop_.workspace().opened(), std::vector<std::string>{screenSettings});
    press(permissionRow(1), "Grant…");
    EXPECT_EQ(desktop_.accessibility().promptCount(), 1);
    EXPECT_EQ(desktop_.workspace().opened(),
              (std::vector<std::string>{screenSettings, accessibilitySettings}));
}

TEST_F(PanelTabTest, LaysAPermissionOutOnTheFirstBaseline) {
    open(SettingsTab::panel);
    const View row = permissionRow(0);
    EXPECT_EQ(std::get<HStack>(row.content).alignment, VerticalAlignment::firstTextBaseline);
    const View& texts = row.children.at(1);
    EXPECT_EQ(textsOf(texts),
              (std::vector<std::string>{"Screen Recording", "Needed to draw pictures of the hidden icons."}));
    EXPECT_EQ(modifierOf<Font>(texts.children.at(1)), Font{TextStyle::caption});
    EXPECT_EQ(textsOf(permissionRow(1).children.at(1)),
              (std::vector<std::string>{"Accessibility",
                                        "Needed to forward a click from the panel to the real icon."}));
}

TEST_F(PanelTabTest, NoticesAGrantWithinASecond) {
    desktop_.screenCapture().setGranted(false);
    open(SettingsTab::panel);
    desktop_.advance(0.5);
    desktop_.screenCapture().setGranted(true);
    desktop_.advance(0.499);
    expectMissing(0);
    desktop_.advance(0.001);
    expectGranted(0);
    desktop_.accessibility().setTrusted(false);
    desktop_.advance(1);
    expectMissing(1);
}

TEST_F(PanelTabTest, LooksAtThePermissionsWhenItIsShown) {
    open(SettingsTab::general);
    desktop_.screenCapture().setGranted(false);
    chooseTab(content(), "Panel");
    runPosted();
    expectMissing(0);
}

TEST_F(PanelTabTest, LooksAtThePermissionsForAsLongAsTheSettingsExist) {
    open(SettingsTab::panel);
    window().close();
    EXPECT_EQ(desktop_.runLoop().timerCount(), 1U);
    controller_.reset();
    EXPECT_EQ(desktop_.runLoop().timerCount(), 0U);
}

}  // namespace
}  // namespace velmo
