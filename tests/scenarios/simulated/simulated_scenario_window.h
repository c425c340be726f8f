#pragma once

#include "platform/simulated/simulated_desktop.h"
#include "platform/view.h"
#include "scenarios/scenario_window.h"

namespace velmo {

/// What a window shows, found and used by what it says.
class SimulatedScenarioWindow : public ScenarioWindow {
public:
    explicit SimulatedScenarioWindow(SimulatedDesktop& desktop) : desktop_(desktop) {}

    bool shows(const std::string& text) override;
    std::vector<std::string> texts() override;
    std::vector<std::string> tabs() override;
    std::string chosenTab() override;
    void chooseTab(const std::string& title) override;
    bool hasButton(const std::string& button) override;
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
    /// Of the whole window.
    virtual View content() = 0;
    SimulatedDesktop& desktop() { return desktop_; }
    void runPosted() { desktop_.runLoop().runPosted(); }

private:
    /// That of the chosen tab, where there are tabs.
    View page();

    SimulatedDesktop& desktop_;
};

class SimulatedScenarioSettings : public SimulatedScenarioWindow {
public:
    using SimulatedScenarioWindow::SimulatedScenarioWindow;
    bool isShown() override;
    void close() override;

protected:
    View content() override;
};

class SimulatedScenarioCalendar : public SimulatedScenarioWindow {
public:
    using SimulatedScenarioWindow::SimulatedScenarioWindow;
    bool isShown() override;
    void close() override;

protected:
    View content() override;
};

class SimulatedScenarioPanel : public SimulatedScenarioWindow {
public:
    using SimulatedScenarioWindow::SimulatedScenarioWindow;
    bool isShown() override { return desktop().windows().visiblePanel() != nullptr; }
    void close() override;

protected:
    View content() override { return desktop().windows().visiblePanel()->content(); }
};

}  // namespace velmo
