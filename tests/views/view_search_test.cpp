#include "views/view_search.h"

#include "views/builders.h"

#include <gtest/gtest-spi.h>

namespace velmo {
namespace {

TEST(ViewSearch, FindsAButtonByItsTextItsToolTipAndItsSymbol) {
    int pressed = 0;
    const auto action = [&pressed] { ++pressed; };
    const View view = hstack(
        2, {button("OK", action), plainButton(symbol("eye", 12), text("down"), action).with(Help{"Look"})});
    press(view, "OK");
    press(view, "Look");
    press(view, "eye");
    EXPECT_EQ(pressed, 3);
}

TEST(ViewSearch, DoesNotSeeThePressedLook) {
    const View view = plainButton(text("up"), text("down"), [] {});
    EXPECT_TRUE(shows(view, "up"));
    EXPECT_FALSE(shows(view, "down"));
    EXPECT_EQ(textsOf(view), std::vector<std::string>{"up"});
}

TEST(ViewSearch, JoinsTheRunsOfAText) {
    const View view = text({{"to the "}, {"left", true}});
    EXPECT_NE(find<Text>(view, "to the left"), nullptr);
    EXPECT_EQ(find<Text>(view, "left"), nullptr);
}

TEST(ViewSearch, UsesEveryKindOfControl) {
    std::string log;
    const View view = tabView(
        {{{"a", "First", {}}, {"b", "Second", {}}}, "a", [&log](const std::string& tag) { log += tag; }},
        {form({section(
             "Header",
             {toggle("Switch", true, [&log](bool on) { log += on ? "on" : "off"; }),
              picker({"Choice",
                      {{"x", "Ex", ""}, {"y", "Why", ""}},
                      "x",
                      PickerStyle::menu,
                      [&log](const std::string& tag) { log += tag; }}),
              slider({1, 0, 9, 1, [&log](double value) { log += std::to_string(static_cast<int>(value)); }})
                  .with(AccessibilityLabel{"Slider"}),
              textField("Field", "", [&log](const std::string& text) { log += text; })})}),
         button("Home", [&log] { log += "h"; }).with(KeyboardShortcut{ShortcutKey::home})});
    switchOver(view, "Switch");
    choose(view, "Choice", "Why");
    moveSlider(view, "Slider", 7);
    edit(view, "Field", "t");
    chooseTab(view, "Second");
    pressShortcut(view, ShortcutKey::home);
    EXPECT_EQ(log, "offy7tbh");
    EXPECT_TRUE(shows(view, "Header"));
}

TEST(ViewSearch, FailsTheTestForWhatIsMissing) {
    EXPECT_NONFATAL_FAILURE(press(text("OK"), "OK"), "There is no \"OK\".");
}

TEST(ViewSearch, FailsTheTestForWhatIsDisabled) {
    EXPECT_NONFATAL_FAILURE(press(button("OK", [] { FAIL(); }).with(Disabled{}), "OK"), "is disabled");
}

TEST(ViewSearch, TakesTheOutermostModifierOfAKind) {
    const View view = text("x").with(padding(1)).with(padding(2, 3));
    EXPECT_EQ(modifierOf<Padding>(view), (Padding{{3, 2, 3, 2}}));
    EXPECT_EQ(modifierOf<Help>(view), std::nullopt);
}

}  // namespace
}  // namespace velmo
