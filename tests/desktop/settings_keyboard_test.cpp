#include "built_files.h"
#include "settings_by_keyboard.h"

#include <filesystem>
#include <fstream>

namespace velmo::desktop {

namespace {

TEST_F(SettingsByKeyboard, GeneralTab) {
    const auto picture = [&] { return x().pixels(*x().area(toggle())); };
    const auto chevron = picture();
    next();
    press("Down");
    EXPECT_TRUE(comesToBe("toggleIconStyle", "ellipsis"));
    EXPECT_TRUE(eventually([&] { return picture() != chevron; }));
    next();
    press("Down");
    EXPECT_TRUE(comesToBe("clickAction", "showPanel"));
    click(toggle());
    EXPECT_TRUE(eventually([&] { return isShown("Velmo.Panel"); }));
    press("Escape");
    EXPECT_TRUE(eventually([&] { return !isShown("Velmo.Panel") && dividerIsExpanded(); }));
    press("Up");
    EXPECT_TRUE(comesToBe("clickAction", "revealInMenuBar"));
    click(toggle());
    EXPECT_TRUE(eventually([&] { return !dividerIsExpanded(); }));
    EXPECT_FALSE(isShown("Velmo.Panel"));
    next();
    const auto autostart = home_ / "config" / "autostart" / "velmo.desktop";
    EXPECT_FALSE(std::filesystem::exists(autostart));
    press("space");
    EXPECT_TRUE(eventually([&] { return std::filesystem::exists(autostart); }));
    EXPECT_NE(textOf(autostart).find(velmoProgram), std::string::npos);
    press("space");
    EXPECT_TRUE(eventually([&] { return !std::filesystem::exists(autostart); }));
}

class SettingsOfBefore : public SettingsByKeyboard {
protected:
    void prepareSession() override { writeDefaults({{"clickAction", "showPanel"}}); }
};

TEST_F(SettingsOfBefore, KeysBeginAtTheChosenButton) {
    const auto window = std::to_string(*settingsWindow());
    xdotool({"mousemove", "--window", window, "190", "35", "click", "1"});
    xdotool({"mousemove", "--window", window, "110", "35", "click", "1"});
    ASSERT_TRUE(comesToRest());
    next();
    next();
    press("Up");
    EXPECT_TRUE(comesToBe("clickAction", "revealInMenuBar"));
}

TEST_F(SettingsByKeyboard, HidingAgain) {
    goToTab(1);
    next();
    next();
    press("Right");
    EXPECT_TRUE(comesToBe("rehideDelay", 6.0));
    press("Home");
    EXPECT_TRUE(comesToBe("rehideDelay", 1.0));
    reveal();
    EXPECT_TRUE(stays([&] { return !dividerIsExpanded(); }, milliseconds(600)));
    EXPECT_TRUE(eventually([&] { return dividerIsExpanded(); }, milliseconds(2500)));
    press("shift+Tab");
    press("space");
    EXPECT_TRUE(comesToBe("autoRehide", false));
    reveal();
    EXPECT_TRUE(stays([&] { return !dividerIsExpanded(); }, milliseconds(2000)));
    clickElsewhere();
    EXPECT_TRUE(eventually([&] { return dividerIsExpanded(); }));
    comeBack();
    next();
    next();
    press("space");
    EXPECT_TRUE(comesToBe("hideOnClickOutside", false));
    reveal();
    clickElsewhere();
    EXPECT_TRUE(stays([&] { return !dividerIsExpanded(); }, milliseconds(500)));
}

TEST_F(SettingsByKeyboard, Showing) {
    const auto place = *x().area(toggle());
    goToTab(1);
    for (int stop = 0; stop < 4; ++stop)
        next();
    movePointer(place.midX(), place.midY());
    EXPECT_TRUE(stays([&] { return dividerIsExpanded(); }, milliseconds(700)));
    movePointer(farLeft, 300);
    press("space");
    EXPECT_TRUE(comesToBe("showOnHover", true));
    // The file is written before the pointer is followed.
    EXPECT_TRUE(stays([&] { return dividerIsExpanded(); }, milliseconds(100)));
    movePointer(place.midX(), place.midY());
    EXPECT_TRUE(eventually([&] { return !dividerIsExpanded(); }));
    movePointer(farLeft, 300);
    press("space");
    EXPECT_TRUE(comesToBe("showOnHover", false));
    clickElsewhere();
    ASSERT_TRUE(eventually([&] { return dividerIsExpanded(); }));
    comeBack();
    next();
    xdotool({"mousemove", "300", "13", "click", "4"});
    EXPECT_TRUE(stays([&] { return dividerIsExpanded(); }, milliseconds(400)));
    press("space");
    EXPECT_TRUE(comesToBe("showOnScroll", true));
    xdotool({"click", "4"});
    EXPECT_TRUE(eventually([&] { return !dividerIsExpanded(); }));
    next();
    EXPECT_FALSE(isShown("Velmo.AlwaysHiddenDivider"));
    press("space");
    EXPECT_TRUE(comesToBe("alwaysHiddenEnabled", true));
    EXPECT_TRUE(eventually([&] { return isShown("Velmo.AlwaysHiddenDivider"); }));
}

TEST_F(SettingsByKeyboard, BeginsAtTheTopOfATabThatWasClicked) {
    next();
    next();
    const auto window = std::to_string(*settingsWindow());
    xdotool({"mousemove", "--window", window, "190", "35", "click", "1"});
    ASSERT_TRUE(stays([&] { return readDefaults().value("autoRehide", true); }, milliseconds(100)));
    next();
    press("space");
    EXPECT_TRUE(comesToBe("autoRehide", false));
}

TEST_F(SettingsByKeyboard, AreWorkedByKeysAlsoWhereTheyAreOpenedAsSoonAsTheyAreClosed) {
    goToTab(1);
    next();
    ASSERT_NO_FATAL_FAILURE(closeSettings());
    openSettings();
    ASSERT_TRUE(eventually([&] { return x().keyboardOwner() == *settingsWindow(); }));
    const auto window = std::to_string(*settingsWindow());
    xdotool({"mousemove", "--window", window, "110", "35", "click", "1"});
    ASSERT_TRUE(comesToRest());
    next();
    press("Down");
    EXPECT_TRUE(comesToBe("toggleIconStyle", "ellipsis"));
}

TEST_F(SettingsByKeyboard, ClockTab) {
    goToTab(2);
    next();
    EXPECT_FALSE(isShown("Velmo.Clock"));
    press("space");
    EXPECT_TRUE(comesToBe("clockEnabled", true));
    EXPECT_TRUE(eventually([&] { return isShown("Velmo.Clock"); }));
    const auto widthOfClock = [&] { return x().area(*x().windowTitled("Velmo.Clock"))->width; };
    const int width = widthOfClock();
    next();
    press("Down");
    ASSERT_TRUE(eventually([&] { return readDefaults().contains("clockFormat"); }));
    const std::string preset = readDefaults()["clockFormat"];
    EXPECT_TRUE(eventually([&] { return widthOfClock() != width; }));
    next();
    press("End");
    xdotool({"type", "yyy"});
    EXPECT_TRUE(comesToBe("clockFormat", preset + "yyy"));
    press("BackSpace");
    EXPECT_TRUE(comesToBe("clockFormat", preset + "yy"));
    press("Home");
    xdotool({"type", "d "});
    EXPECT_TRUE(comesToBe("clockFormat", "d " + preset + "yy"));
    const int longer = widthOfClock();
    press("ctrl+a");
    press("BackSpace");
    EXPECT_TRUE(comesToBe("clockFormat", ""));
    EXPECT_TRUE(eventually([&] { return widthOfClock() < longer; }));
}

TEST_F(SettingsByKeyboard, PanelTab) {
    goToTab(3);
    next();
    press("space");
    EXPECT_TRUE(eventually([&] { return isShown("Velmo.Panel"); }));
    press("Escape");
    EXPECT_TRUE(eventually([&] { return !isShown("Velmo.Panel"); }));
    next();
    press("space");
    EXPECT_TRUE(comesToBe("refreshPanelOnOpen", false));
}

TEST_F(SettingsByKeyboard, SpacingTab) {
    const auto widthOf = [&](xcb_window_t icon) { return x().area(x().parent(icon))->width; };
    const auto first = startTrayProgram("gxkb", "Gxkb");
    const int usual = widthOf(first);
    comeBack();
    goToTab(4);
    next();
    press("Down");
    const auto storedSpacing = [&]() -> nlohmann::json {
        for (const auto& file : std::filesystem::directory_iterator(defaultsFile().parent_path())) {
            if (!file.path().filename().string().starts_with("global-"))
                continue;
            std::ifstream stream(file.path());
            const auto values = nlohmann::json::parse(stream, nullptr, false);
            return values.is_object() ? values.value("NSStatusItemSpacing", nlohmann::json())
                                      : nlohmann::json();
        }
        return {};
    };
    EXPECT_TRUE(eventually([&] { return storedSpacing() == 10; })) << storedSpacing();
    const auto second = startTrayProgram("parcellite", "Parcellite");
    EXPECT_TRUE(eventually([&] { return widthOf(second) < usual; })) << widthOf(second) << " of " << usual;
    EXPECT_EQ(widthOf(first), usual);
    comeBack();
    press("Up");
    EXPECT_TRUE(eventually([&] { return storedSpacing().is_null(); })) << storedSpacing();
}

}  // namespace

}  // namespace velmo::desktop
