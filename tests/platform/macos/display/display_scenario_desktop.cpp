#include "platform/macos/display/display_scenario_window.h"
#include "platform/macos/scenarios/macos_scenario_desktop.h"

namespace velmo {
namespace macos {
namespace {

/// With the windows of GNUstep.
class DisplayScenarioDesktop : public MacosScenarioDesktop {
public:
    ScenarioWindow& settings() override { return settings_; }
    ScenarioWindow& calendar() override { return calendar_; }
    ScenarioWindow& panel() override { return panel_; }

protected:
    bool waitUntil(const std::function<bool()>& condition) override {
        return DisplayStage::runUntil(condition);
    }

private:
    SettingsDisplayStage stage_;
    DisplayScenarioSettings settings_{stage_, *this};
    DisplayScenarioCalendar calendar_{stage_, *this};
    DisplayScenarioPanel panel_{stage_, *this};
};

}  // namespace
}  // namespace macos

std::unique_ptr<ScenarioDesktop> makeScenarioDesktop() {
    return std::make_unique<macos::DisplayScenarioDesktop>();
}

}  // namespace velmo
