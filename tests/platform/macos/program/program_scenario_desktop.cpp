#include "platform/macos/program/program_test.h"
#include "platform/macos/scenarios/macos_scenario_desktop.h"

#include <stdexcept>

namespace velmo {
namespace macos {
namespace {

/// Without a display there are no windows.
class ProgramScenarioDesktop : public MacosScenarioDesktop {
public:
    ScenarioWindow& settings() override { throw std::logic_error("there are no settings"); }
    ScenarioWindow& calendar() override { throw std::logic_error("there is no calendar"); }
    ScenarioWindow& panel() override { throw std::logic_error("there is no panel"); }

protected:
    bool waitUntil(const std::function<bool()>& condition) override {
        return MacosStage::runUntil(condition);
    }

private:
    ProgramStage stage_;
};

}  // namespace
}  // namespace macos

std::unique_ptr<ScenarioDesktop> makeScenarioDesktop() {
    return std::make_unique<macos::ProgramScenarioDesktop>();
}

}  // namespace velmo
