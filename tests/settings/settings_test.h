#pragma once

#include "clock/date_of.h"
#include "platform/simulated/simulated_desktop.h"
#include "settings/settings_window_controller.h"
#include "views/view_search.h"

#include <gtest/gtest.h>

namespace velmo {

/// The settings window on a simulated desktop.
class SettingsTest : public testing::Test {
protected:
    SettingsTest() { desktop_.runLoop().setNow(dateOf(2025, 7, 5, 13, 4, 9)); }

    void open(std::optional<SettingsTab> tab = std::nullopt) {
        if (!controller_)
            controller_ = std::make_unique<SettingsWindowController>(
                preferences_, [this] { ++panelRequests_; }, desktop_.platform());
        controller_->show(tab);
        runPosted();
    }
    void runPosted() { desktop_.runLoop().runPosted(); }

    SimulatedWindow& window() { return *desktop_.windows().windows().front(); }
    const View& content() { return window().content(); }
    const TabView& tabs() { return std::get<TabView>(content().content); }
    const View& tab(SettingsTab tab) { return content().children.at(static_cast<std::size_t>(tab)); }
    /// The form of the tab that the window was opened on.
    const View& shown() { return tab(*settingsTabFromRawValue(tabs().selection)); }

    /// Header and footer of each section of the tab.
    std::vector<Section> sections() {
        std::vector<Section> result;
        for (const View* section : findAll<Section>(shown()))
            result.push_back(std::get<Section>(section->content));
        return result;
    }
    std::vector<View> rows(std::size_t section) { return shown().children.at(section).children; }

    bool isOn(std::string_view title) {
        const View* found = find<Toggle>(shown(), title);
        return found != nullptr && std::get<Toggle>(found->content).isOn;
    }
    const Picker& pickerOf(std::string_view title) {
        return std::get<Picker>(find<Picker>(shown(), title)->content);
    }
    /// Switches it over and over again, and expects the setting to follow and be followed.
    void expectToggle(const char* title, const Setting<bool>& setting) {
        for (int i = 0; i < 2; ++i) {
            const bool before = setting.value();
            EXPECT_EQ(isOn(title), before) << title;
            switchOver(shown(), title);
            EXPECT_EQ(setting.value(), !before) << title;
            EXPECT_EQ(desktop_.userDefaults().boolForKey(setting.key()), !before) << title;
            runPosted();
            EXPECT_EQ(isOn(title), !before) << title;
        }
    }

    static std::vector<std::string> titlesOf(const Picker& picker) {
        std::vector<std::string> titles;
        for (const auto& option : picker.options)
            titles.push_back(option.title);
        return titles;
    }

    SimulatedDesktop desktop_;
    std::shared_ptr<Preferences> preferences_ = std::make_shared<Preferences>(desktop_.userDefaults());
    int panelRequests_ = 0;
    std::unique_ptr<SettingsWindowController> controller_;
};

}  // namespace velmo
