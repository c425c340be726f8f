#pragma once

#include "platform/macos/display/settings_display_test.h"
#include "platform/macos/scenarios/macos_scenario_desktop.h"
#include "scenarios/scenario_window.h"

namespace velmo::macos {

/// What GNUstep shows in a window, found and used as a user does.
class DisplayScenarioWindow : public ScenarioWindow {
public:
    DisplayScenarioWindow(const SettingsDisplayStage& stage, MacosScenarioDesktop& desktop)
        : stage_(stage), desktop_(desktop) {}

    bool isShown() override { return static_cast<bool>(content()); }
    bool shows(const std::string& text) override { return DisplayStage::shows(page(), text); }
    std::vector<std::string> texts() override;
    std::vector<std::string> tabs() override;
    std::string chosenTab() override;
    void chooseTab(const std::string& title) override;
    bool hasButton(const std::string& button) override { return static_cast<bool>(buttonSaying(button)); }
    void press(const std::string& button) override;
    bool isOn(const std::string& toggle) override;
    void switchOver(const std::string& toggle) override;
    std::string chosen(const std::string& picker) override;
    void choose(const std::string& picker, const std::string& option) override;
    std::string textIn(const std::string& field) override;
    void type(const std::string& field, const std::string& text) override;
    double position(const std::string& slider) override;
    void moveSlider(const std::string& slider, double value) override;
    bool pressKey(std::uint16_t keyCode, ModifierFlags flags, const std::string& characters) override;

protected:
    /// None while it is not shown.
    virtual NSView content() = 0;
    const SettingsDisplayStage& stage() const { return stage_; }
    MacosScenarioDesktop& desktop() const { return desktop_; }

private:
    NSView page();
    NSButton buttonSaying(const std::string& words);
    /// The control of that name; an exception where there is none.
    template <typename Handle>
    Handle control(const std::string& name);
    /// The same, where it can be used.
    template <typename Handle>
    Handle usable(const std::string& name);

    const SettingsDisplayStage& stage_;
    MacosScenarioDesktop& desktop_;
};

class DisplayScenarioSettings : public DisplayScenarioWindow {
public:
    using DisplayScenarioWindow::DisplayScenarioWindow;
    void close() override;

protected:
    NSView content() override;

private:
    static NSWindow window();
};

class DisplayScenarioCalendar : public DisplayScenarioWindow {
public:
    using DisplayScenarioWindow::DisplayScenarioWindow;
    void close() override;

protected:
    NSView content() override;
};

class DisplayScenarioPanel : public DisplayScenarioWindow {
public:
    using DisplayScenarioWindow::DisplayScenarioWindow;
    void close() override { pressKey(escapeKeyCode, 0, ""); }

protected:
    NSView content() override;
};

}  // namespace velmo::macos
