#include "app/run_application.h"

#include "platform/simulated/simulated_desktop.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

using Call = SimulatedApplication::Call;

TEST(RunApplication, SetsTheDelegateThenThePolicyThenRuns) {
    SimulatedDesktop desktop;
    std::vector<Call> callsAtTheLaunch;
    desktop.userDefaults().setWriteObserver([&](const std::string& key, const auto&) {
        if (key == "hasCompletedFirstLaunch")
            callsAtTheLaunch = desktop.application().calls();
    });
    runApplication(desktop.platform());
    EXPECT_EQ(callsAtTheLaunch, (std::vector<Call>{Call::setDelegate, Call::setActivationPolicy, Call::run}));
}

TEST(RunApplication, StaysOutOfTheDock) {
    SimulatedDesktop desktop;
    runApplication(desktop.platform());
    ASSERT_TRUE(desktop.application().activationPolicy());
    EXPECT_EQ(static_cast<int>(*desktop.application().activationPolicy()), 1);
}

TEST(RunApplication, LeavesNoDelegateBehind) {
    SimulatedDesktop desktop;
    runApplication(desktop.platform());
    EXPECT_EQ(desktop.application().delegate(), nullptr);
    EXPECT_EQ(desktop.application().calls().back(), Call::unsetDelegate);
    EXPECT_TRUE(desktop.statusBar().items().empty());
    EXPECT_TRUE(desktop.runLoop().runUntilIdle());
}

}  // namespace
}  // namespace velmo
