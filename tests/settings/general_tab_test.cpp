#include "settings/settings_test.h"

namespace velmo {
namespace {

class GeneralTabTest : public SettingsTest {
protected:
    GeneralTabTest() { open(SettingsTab::general); }
};

TEST_F(GeneralTabTest, HasItsSections) {
    EXPECT_TRUE(std::holds_alternative<Form>(shown().content));
    EXPECT_EQ(sections(),
              (std::vector<Section>{{"How to use Velmo", ""}, {"Toggle icon", ""}, {"General", ""}}));
}

TEST_F(GeneralTabTest, TellsHowToUseTheProgram) {
    EXPECT_EQ(textsOf(shown().children.at(0)),
              (std::vector<std::string>{
                  "Hold ⌘ and drag any menu bar icon to the left of the divider  |  to hide it.",
                  "Click the toggle icon to show hidden icons, click again to hide them.",
                  "⌥-click the toggle to reveal the always-hidden section  ‖  when it is enabled.",
                  "⌘-drag the dividers and the toggle to move where each section starts."}));
    const auto lines = rows(0);
    for (std::size_t i = 0; i < lines.size(); ++i)
        EXPECT_TRUE(says(lines[i], std::to_string(i + 1) + ".circle"));
}

TEST_F(GeneralTabTest, HasOneBoldWord) {
    std::vector<std::string> bold;
    for (const View* view : findAll<Text>(shown())) {
        for (const TextRun& run : std::get<Text>(view->content).runs) {
            if (run.isBold)
                bold.push_back(run.text);
        }
    }
    EXPECT_EQ(bold, std::vector<std::string>{"left"});
}

TEST_F(GeneralTabTest, OffersTheIconStyles) {
    EXPECT_EQ(pickerOf("Icon").style, PickerStyle::menu);
    EXPECT_EQ(titlesOf(pickerOf("Icon")), (std::vector<std::string>{"Chevron  ‹ ›", "Ellipsis  …", "Dot  ●",
                                                                    "Lines  ≡", "Eye", "Fridge (velmo)"}));
    EXPECT_EQ(pickerOf("Icon").selection, "chevron");
    for (const ToggleIconStyle style : allToggleIconStyles) {
        choose(shown(), "Icon", displayName(style));
        EXPECT_EQ(preferences_->toggleIconStyle.value(), style);
        runPosted();
        EXPECT_EQ(pickerOf("Icon").selection, rawValue(style));
    }
}

TEST_F(GeneralTabTest, OffersTheClickActions) {
    EXPECT_EQ(pickerOf("Clicking it").style, PickerStyle::radioGroup);
    EXPECT_EQ(titlesOf(pickerOf("Clicking it")),
              (std::vector<std::string>{"Reveal items in the menu bar", "Open the hidden items panel"}));
    choose(shown(), "Clicking it", "Open the hidden items panel");
    EXPECT_EQ(preferences_->clickAction.value(), ClickAction::showPanel);
    runPosted();
    EXPECT_EQ(pickerOf("Clicking it").selection, "showPanel");
    choose(shown(), "Clicking it", "Reveal items in the menu bar");
    EXPECT_EQ(preferences_->clickAction.value(), ClickAction::revealInMenuBar);
}

TEST_F(GeneralTabTest, HasThePickersInTheirOrder) {
    EXPECT_EQ(rows(1).size(), 2U);
    EXPECT_TRUE(says(rows(1)[0], "Icon"));
    EXPECT_TRUE(says(rows(1)[1], "Clicking it"));
}

TEST_F(GeneralTabTest, TurnsTheStartAtLoginOnAndOff) {
    EXPECT_FALSE(isOn("Launch at login"));
    switchOver(shown(), "Launch at login");
    EXPECT_EQ(desktop_.loginService().status(), LoginServiceStatus::enabled);
    runPosted();
    EXPECT_TRUE(isOn("Launch at login"));
    switchOver(shown(), "Launch at login");
    EXPECT_EQ(desktop_.loginService().status(), LoginServiceStatus::notRegistered);
    runPosted();
    EXPECT_FALSE(isOn("Launch at login"));
}

TEST_F(GeneralTabTest, ShowsWhyTheStartAtLoginFailed) {
    EXPECT_EQ(rows(2).size(), 1U);
    desktop_.loginService().setError("The disk is read-only.");
    switchOver(shown(), "Launch at login");
    runPosted();
    EXPECT_FALSE(isOn("Launch at login"));
    ASSERT_EQ(rows(2).size(), 2U);
    EXPECT_EQ(rows(2)[1].modifiers,
              (std::vector<Modifier>{Font{TextStyle::caption}, Foreground{{ColorRole::red, 1}}}));
    EXPECT_TRUE(says(rows(2)[1], "The disk is read-only."));
    desktop_.loginService().setError(std::nullopt);
    switchOver(shown(), "Launch at login");
    runPosted();
    EXPECT_EQ(rows(2).size(), 1U);
}

}  // namespace
}  // namespace velmo
