#include "accessible_tree.h"
#include "settings_by_keyboard.h"

#include <optional>

namespace velmo::desktop {

namespace {

constexpr const char* settingsTitle = "Velmo Settings";

/// The user has an assistive program, and works the settings by keys.
class AccessibleSettings : public SettingsByKeyboard {
protected:
    void prepareSession() override {
        startSessionBus();
        tree_.emplace(environment_);
        writeDefaults({{"clockFormat", "HH:mm:ss"}});
    }
    void TearDown() override {
        tree_.reset();
        SettingsByKeyboard::TearDown();
    }
    std::string chosenPreset() const {
        const auto picker = tree_->element(settingsTitle, "combo box: Preset");
        return picker ? picker->description : "";
    }

    std::optional<AccessibleTree> tree_;
};

TEST_F(AccessibleSettings, PresetFollowsThePatternThatIsTyped) {
    goToTab(2);
    for (int stop = 0; stop < 3; ++stop)
        next();
    ASSERT_TRUE(eventually([&] { return chosenPreset() == "Time with seconds"; })) << chosenPreset();
    press("End");
    press("y");
    EXPECT_TRUE(comesToBe("clockFormat", "HH:mm:ssy"));
    EXPECT_TRUE(eventually([&] { return chosenPreset() == "Custom"; })) << chosenPreset();
    press("BackSpace");
    EXPECT_TRUE(comesToBe("clockFormat", "HH:mm:ss"));
    EXPECT_TRUE(eventually([&] { return chosenPreset() == "Time with seconds"; })) << chosenPreset();
}

TEST_F(AccessibleSettings, CustomChangesNothing) {
    goToTab(2);
    next();
    next();
    press("End");
    EXPECT_TRUE(stays([&] { return readDefaults()["clockFormat"] == "HH:mm:ss"; }, milliseconds(300)));
    EXPECT_TRUE(eventually([&] { return chosenPreset() == "Time with seconds"; })) << chosenPreset();
}

/// The settings, as assistive programs have them.
class SettingsWithTree : public SettingsSession {
protected:
    void TearDown() override {
        tree_.reset();
        SettingsSession::TearDown();
    }
    /// On the server that was started before.
    void openWithTree() {
        startSessionBus();
        tree_.emplace(environment_);
        startWindowManager();
        startVelmo();
        openSettings();
    }

    std::optional<AccessibleTree> tree_;
};

/// A display that lets nobody click on the user's behalf, Velmo and the test included: everything is done
/// as assistive programs do it.
class SettingsWithoutPermission : public SettingsWithTree {
protected:
    void SetUp() override {
        DesktopSession::SetUp();
        startServer("1280x720x24", {"-extension", "XTEST"});
        installNotingPrograms({"gnome-control-center"});
        environment_["XDG_CURRENT_DESKTOP"] = "GNOME";
        openWithTree();
    }
    bool has(const std::string& roleAndName) const {
        return tree_->element(settingsTitle, roleAndName).has_value();
    }
};

TEST_F(SettingsWithoutPermission, GrantOpensTheDesktopsPrivacySettings) {
    tree_->activate("Panel");
    EXPECT_TRUE(eventually([&] { return has("push button: Accessibility, Grant…"); }));
    EXPECT_TRUE(has("push button: Screen Recording, Open Settings")) << "which is not missing";
    EXPECT_FALSE(has("push button: Accessibility, Open Settings"));
    EXPECT_EQ(notedStarts(), "");
    tree_->activate("Accessibility, Grant…");
    EXPECT_TRUE(eventually([&] { return notedStarts() == "gnome-control-center privacy\n"; }))
        << notedStarts();
    EXPECT_TRUE(stays([&] { return has("push button: Accessibility, Grant…"); }, milliseconds(1500)))
        << "as long as nothing has changed";
}

/// The window at that many dots an inch.
class SettingsAtScale : public SettingsWithTree, public testing::WithParamInterface<int> {
protected:
    void SetUp() override {
        DesktopSession::SetUp();
        startServer("1920x1200x24");
        addToResources("Xft.dpi:\t" + std::to_string(GetParam()) + "\n");
        openWithTree();
    }
};

TEST_P(SettingsAtScale, HoldsEveryControlOfEveryTab) {
    constexpr int usualResolution = 96;
    const auto window = *x().area(*settingsWindow());
    EXPECT_EQ(window.width, 540 * GetParam() / usualResolution);
    EXPECT_EQ(window.height, 500 * GetParam() / usualResolution);
    for (const char* tab : {"General", "Hiding", "Clock", "Panel", "Spacing"}) {
        tree_->activate(tab);
        const auto frame = tree_->element(settingsTitle, "frame: Velmo Settings").value().place;
        EXPECT_NEAR(frame.width * window.height, frame.height * window.width, window.width);
        int count = 0;
        for (const auto& element : tree_->elementsOf(settingsTitle)) {
            const auto& place = element.place;
            // The list of a picker opens in a window of its own.
            if (element.name.empty() || place.width == 0 || element.role == "list item")
                continue;
            ++count;
            EXPECT_GE(place.x, frame.x) << tab << ", " << element.roleAndName();
            EXPECT_LE(place.x + place.width, frame.x + frame.width) << tab << ", " << element.roleAndName();
            EXPECT_GE(place.height, 10 * frame.width / 540) << tab << ", " << element.roleAndName();
        }
        EXPECT_GT(count, 10) << tab;
    }
}

INSTANTIATE_TEST_SUITE_P(DotsPerInch, SettingsAtScale, testing::Values(96, 144, 192),
                         testing::PrintToStringParamName());

}  // namespace

}  // namespace velmo::desktop
