#pragma once

#include "platform/event.h"

#include <string>
#include <vector>

namespace velmo {

/// A window of the program as its user has it. Controls go by what assistive programs call them, buttons and
/// options by what they say.
class ScenarioWindow {
public:
    ScenarioWindow() = default;
    ScenarioWindow(const ScenarioWindow&) = delete;
    ScenarioWindow& operator=(const ScenarioWindow&) = delete;
    virtual ~ScenarioWindow() = default;

    virtual bool isShown() = 0;
    virtual void close() = 0;
    /// Of the page that is shown.
    virtual bool shows(const std::string& text) = 0;
    virtual std::vector<std::string> texts() = 0;

    // Tabs go by their titles.
    virtual std::vector<std::string> tabs() = 0;
    virtual std::string chosenTab() = 0;
    virtual void chooseTab(const std::string& title) = 0;

    virtual bool hasButton(const std::string& button) = 0;
    virtual void press(const std::string& button) = 0;
    virtual bool isOn(const std::string& toggle) = 0;
    virtual void switchOver(const std::string& toggle) = 0;
    virtual std::string chosen(const std::string& picker) = 0;
    virtual void choose(const std::string& picker, const std::string& option) = 0;
    virtual std::string textIn(const std::string& field) = 0;
    virtual void type(const std::string& field, const std::string& text) = 0;
    virtual double position(const std::string& slider) = 0;
    virtual void moveSlider(const std::string& slider, double value) = 0;
    /// True where the program took the key.
    virtual bool pressKey(std::uint16_t keyCode, ModifierFlags flags, const std::string& characters) = 0;
};

}  // namespace velmo
