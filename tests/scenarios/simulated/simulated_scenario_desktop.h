#pragma once

#include "platform/simulated/simulated_desktop.h"
#include "scenarios/scenario_desktop.h"
#include "scenarios/simulated/simulated_scenario_window.h"

#include <optional>

namespace velmo {

class SimulatedScenarioDesktop : public ScenarioDesktop {
public:
    SimulatedScenarioDesktop();

    void run(const std::function<void()>& user) override;
    int endings() override;
    std::vector<std::string> leftBehind() override;

    void store(const std::string& key, const DefaultsValue& value) override;
    bool isStored(const std::string& key) override;
    bool storedFlag(const std::string& key) override { return desktop_.userDefaults().boolForKey(key); }
    double storedNumber(const std::string& key) override;
    std::string storedText(const std::string& key) override;
    Data storedData(const std::string& key) override;

    Date now() override { return desktop_.runLoop().now(); }
    void setHoursFromUtc(int hours) override;
    void wait(Seconds seconds) override { desktop_.advance(seconds); }
    testing::AssertionResult happensAfter(Seconds seconds, const std::function<bool()>& condition) override;
    bool happensWithin(Seconds seconds, const std::function<bool()>& condition) override;

    bool hasItem(const std::string& item) override { return desktop_.statusBar().item(item) != nullptr; }
    bool isVisible(const std::string& item) override { return itemOf(item).isVisible(); }
    double length(const std::string& item) override { return itemOf(item).length(); }
    bool isEnabled(const std::string& item) override { return buttonOf(item).isEnabled(); }
    std::string title(const std::string& item) override { return buttonOf(item).title(); }
    std::string toolTip(const std::string& item) override { return buttonOf(item).toolTip(); }
    std::string symbol(const std::string& item) override;
    void click(const std::string& item, ModifierFlags flags) override;

    void openMenu(const std::string& item, const std::function<void()>& whileOpen) override;
    std::vector<std::string> menuTitles() override { return openMenu_->titles(); }
    void choose(const std::string& title) override;
    void setOtherMenuOpen(bool isOpen) override;

    void movePointer(Place place) override;
    void clickWithPointer() override;
    void scroll(double deltaX, double deltaY) override;
    bool pressShortcut(std::uint16_t keyCode, std::uint32_t modifiers) override;
    std::vector<std::string> openedAddresses() override { return desktop_.workspace().opened(); }

    void setMayCapture(bool may) override { desktop_.screenCapture().setGranted(may); }
    int captureQuestions() override { return static_cast<int>(desktop_.screenCapture().requestCount()); }
    void setTrusted(bool isTrusted) override { desktop_.accessibility().setTrusted(isTrusted); }
    int trustQuestions() override { return desktop_.accessibility().promptCount(); }
    bool startsAtLogin() override;
    void setLoginError(const std::string& error) override;
    std::optional<double> iconSpacing() override;
    int logOuts() override { return desktop_.session().logOutRequests(); }
    void setHiddenIcons(const std::vector<std::string>& names) override;
    std::string clickedIcon() override;

    void startAgain() override;
    ScenarioWindow& settings() override { return settings_; }
    ScenarioWindow& calendar() override { return calendar_; }
    ScenarioWindow& panel() override { return panel_; }

private:
    SimulatedStatusItem& itemOf(const std::string& item);
    SimulatedStatusBarButton& buttonOf(const std::string& item) { return *itemOf(item).button(); }
    void runPosted() { desktop_.runLoop().runPosted(); }

    SimulatedDesktop desktop_;
    SimulatedOpenMenu* openMenu_ = nullptr;
    std::optional<SimulatedWindowServer::WindowId> otherMenu_;
    SimulatedScenarioSettings settings_{desktop_};
    SimulatedScenarioCalendar calendar_{desktop_};
    SimulatedScenarioPanel panel_{desktop_};
};

}  // namespace velmo
