#pragma once

#include "platform/event.h"
#include "platform/run_loop.h"
#include "platform/user_defaults.h"
#include "scenarios/scenario_window.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace velmo {

/// A desktop as its user has it: what they do, and what they see of the program. Scenarios know nothing else,
/// so that each is played on every desktop that implements this.
///
/// An action returns once what follows from it at once has happened. Items go by their autosave names.
/// Whatever is not there to be used or seen fails the test.
class ScenarioDesktop {
public:
    enum class Place { elsewhere, menuBar, toggle };

    ScenarioDesktop() = default;
    ScenarioDesktop(const ScenarioDesktop&) = delete;
    ScenarioDesktop& operator=(const ScenarioDesktop&) = delete;
    virtual ~ScenarioDesktop() = default;

    /// Runs the program, and the function once it has launched. The program ends with the function.
    virtual void run(const std::function<void()>& user) = 0;
    /// How often the program has ended itself.
    virtual int endings() = 0;
    /// Names of what is still there of the program.
    virtual std::vector<std::string> leftBehind() = 0;

    // Settings as the system stores them. There are none at first.
    virtual void store(const std::string& key, const DefaultsValue& value) = 0;
    virtual bool isStored(const std::string& key) = 0;
    virtual bool storedFlag(const std::string& key) = 0;
    virtual double storedNumber(const std::string& key) = 0;
    virtual std::string storedText(const std::string& key) = 0;
    virtual Data storedData(const std::string& key) = 0;

    /// UTC, which the desktop's own time is ahead of by the hours that were set last. 0 at first.
    virtual Date now() = 0;
    virtual void setHoursFromUtc(int hours) = 0;
    virtual void wait(Seconds seconds) = 0;
    /// Waits until it is so. The seconds count from when the user, the system or another application did
    /// something last, or from the end of the last wait. Fails where it is earlier than they say, or later:
    /// to the millisecond where the time is virtual, and otherwise in less than half of the time, or not for
    /// some seconds more.
    virtual testing::AssertionResult happensAfter(Seconds seconds,
                                                  const std::function<bool()>& condition) = 0;
    /// The same, where it may be earlier.
    virtual bool happensWithin(Seconds seconds, const std::function<bool()>& condition) = 0;

    // Items of the menu bar.
    virtual bool hasItem(const std::string& item) = 0;
    virtual bool isVisible(const std::string& item) = 0;
    /// In points.
    virtual double length(const std::string& item) = 0;
    virtual bool isEnabled(const std::string& item) = 0;
    virtual std::string title(const std::string& item) = 0;
    virtual std::string toolTip(const std::string& item) = 0;
    /// Name of the symbol.
    virtual std::string symbol(const std::string& item) = 0;
    virtual void click(const std::string& item, ModifierFlags flags = 0) = 0;

    // Menus. One is opened by a right click, and closes when the function returns.
    virtual void openMenu(const std::string& item, const std::function<void()>& whileOpen) = 0;
    /// Of the menu that is open, from top to bottom; "-" stands for a separator.
    virtual std::vector<std::string> menuTitles() = 0;
    /// Of the menu that is open. It takes effect as the menu closes.
    virtual void choose(const std::string& title) = 0;
    /// Of another application.
    virtual void setOtherMenuOpen(bool isOpen) = 0;

    /// It begins elsewhere.
    virtual void movePointer(Place place) = 0;
    /// With the pointer where it is, on nothing of the program.
    virtual void clickWithPointer() = 0;
    virtual void scroll(double deltaX, double deltaY) = 0;
    /// False where no shortcut stands for it. The modifiers are those of hot keys.
    virtual bool pressShortcut(std::uint16_t keyCode, std::uint32_t modifiers) = 0;
    /// Addresses that the program has had opened.
    virtual std::vector<std::string> openedAddresses() = 0;

    // What the user allows; nothing at first. The counts are of the program's questions.
    virtual void setMayCapture(bool may) = 0;
    virtual int captureQuestions() = 0;
    virtual void setTrusted(bool isTrusted) = 0;
    virtual int trustQuestions() = 0;

    // What the system knows.
    virtual bool startsAtLogin() = 0;
    /// Why it cannot be changed whether the program does; empty where it can.
    virtual void setLoginError(const std::string& error) = 0;
    /// Between icons; absent where it is the system's own.
    virtual std::optional<double> iconSpacing() = 0;
    /// How often the program has asked for it.
    virtual int logOuts() = 0;

    /// Icons of other applications left of the divider. Set while the program runs.
    virtual void setHiddenIcons(const std::vector<std::string>& names) = 0;
    /// The last icon that was clicked without the user's hand; empty for none.
    virtual std::string clickedIcon() = 0;

    /// The user starts the program that is running.
    virtual void startAgain() = 0;
    virtual ScenarioWindow& settings() = 0;
    virtual ScenarioWindow& calendar() = 0;
    virtual ScenarioWindow& panel() = 0;
};

/// Of the desktop that the test program is built for.
std::unique_ptr<ScenarioDesktop> makeScenarioDesktop();

}  // namespace velmo
