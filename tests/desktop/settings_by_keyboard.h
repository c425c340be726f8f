#pragma once

#include "settings_session.h"

#include <filesystem>
#include <fstream>
#include <iterator>

namespace velmo::desktop {

/// Everything is done by keys alone, in the real window.
class SettingsByKeyboard : public SettingsSession {
protected:
    void SetUp() override {
        SettingsSession::SetUp();
        prepareSession();
        startWindowManager();
        startVelmo();
        openSettings();
        // What is active need not have the keyboard yet.
        ASSERT_TRUE(eventually(
            [&] { return activeWindow() == *settingsWindow() && x().keyboardOwner() == *settingsWindow(); }));
    }

    virtual void prepareSession() {}

    void press(const std::string& key) const { xdotool({"key", key}); }
    /// The chain begins behind the tabs, of which the chosen one is a stop.
    void goToTab(int index) {
        const int stopsOfGeneral = 4;
        for (int stop = 0; stop < stopsOfGeneral; ++stop)
            press("Tab");
        for (int tab = 0; tab < index; ++tab)
            press("Right");
    }
    void next() const { press("Tab"); }

    /// Waits for a setting in the file.
    testing::AssertionResult comesToBe(const std::string& key, const nlohmann::json& value) const {
        if (eventually([&] { return readDefaults().value(key, nlohmann::json()) == value; }))
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << key << ": " << readDefaults().value(key, nlohmann::json());
    }
    bool isShown(const std::string& title) const {
        const auto window = x().windowTitled(title);
        return window && x().isViewable(*window);
    }
    /// By a click, with the pointer elsewhere afterwards.
    void reveal() const {
        click(toggle());
        movePointer(farLeft, 300);
        ASSERT_TRUE(eventually([&] { return !dividerIsExpanded(); }));
    }
    void clickElsewhere() const { xdotool({"mousemove", std::to_string(farLeft), "300", "click", "1"}); }
    /// Gives the settings the keyboard again, at the same control.
    void comeBack() const {
        startAgain();
        // A window manager may call it active all the while.
        ASSERT_TRUE(eventually([&] { return x().keyboardOwner() == *settingsWindow(); }));
    }
    static std::string textOf(const std::filesystem::path& file) {
        std::ifstream stream(file);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
};

}  // namespace velmo::desktop
