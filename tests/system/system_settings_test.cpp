#include "system/system_settings.h"

#include "platform/simulated/simulated_workspace.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

TEST(SystemSettings, AreOpenedAtAPane) {
    SimulatedWorkspace workspace;
    openSystemSettings(workspace, systemClockPane);
    EXPECT_EQ(
        workspace.opened(),
        std::vector<std::string>{"x-apple.systempreferences:com.apple.ControlCenter-Settings.extension"});
}

TEST(SystemSettings, AreOpenedAtAnAnchor) {
    SimulatedWorkspace workspace;
    openSystemSettings(workspace, "com.apple.preference.security", "Privacy_Accessibility");
    EXPECT_EQ(workspace.opened(),
              std::vector<std::string>{
                  "x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility"});
}

}  // namespace
}  // namespace velmo
