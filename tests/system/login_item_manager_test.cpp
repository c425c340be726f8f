#include "system/login_item_manager.h"

#include "platform/simulated/simulated_login_service.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

class LoginItemManagerTest : public testing::Test {
protected:
    SimulatedLoginService service_;
};

TEST_F(LoginItemManagerTest, ShowsWhatTheSystemSaysAtFirst) {
    EXPECT_FALSE(LoginItemManager(service_).isEnabled.value());
    service_.setStatus(LoginServiceStatus::enabled);
    EXPECT_TRUE(LoginItemManager(service_).isEnabled.value());
}

TEST_F(LoginItemManagerTest, IsOnOnlyWhereTheSystemSaysEnabled) {
    for (const auto status : {LoginServiceStatus::notRegistered, LoginServiceStatus::requiresApproval,
                              LoginServiceStatus::notFound}) {
        service_.setStatus(status);
        EXPECT_FALSE(LoginItemManager(service_).isEnabled.value());
    }
}

TEST_F(LoginItemManagerTest, ChangesNothingByItself) {
    const LoginItemManager manager(service_);
    EXPECT_EQ(manager.errorMessage.value(), std::nullopt);
    EXPECT_EQ(service_.changeCount(), 0);
}

TEST_F(LoginItemManagerTest, TurnsItOnAndOff) {
    LoginItemManager manager(service_);
    manager.setEnabled(true);
    EXPECT_EQ(service_.status(), LoginServiceStatus::enabled);
    EXPECT_TRUE(manager.isEnabled.value());
    manager.setEnabled(false);
    EXPECT_EQ(service_.status(), LoginServiceStatus::notRegistered);
    EXPECT_FALSE(manager.isEnabled.value());
}

TEST_F(LoginItemManagerTest, ShowsOffWithoutAnErrorWhereTheUserHasToApprove) {
    service_.setStatusAfterRegistration(LoginServiceStatus::requiresApproval);
    LoginItemManager manager(service_);
    manager.setEnabled(true);
    EXPECT_EQ(service_.changeCount(), 1);
    EXPECT_EQ(manager.errorMessage.value(), std::nullopt);
    EXPECT_FALSE(manager.isEnabled.value());
}

TEST_F(LoginItemManagerTest, StaysOnWhereTheSystemRefusesToTurnItOff) {
    service_.setStatus(LoginServiceStatus::enabled);
    service_.setError("The disk is read-only.");
    LoginItemManager manager(service_);
    manager.setEnabled(false);
    EXPECT_EQ(manager.errorMessage.value(), "The disk is read-only.");
    EXPECT_TRUE(manager.isEnabled.value());
}

TEST_F(LoginItemManagerTest, SpringsBackWhereTheSystemRefusesToTurnItOn) {
    service_.setError("No.");
    LoginItemManager manager(service_);
    // As a switch may do that is bound to it.
    manager.isEnabled.set(true);
    manager.setEnabled(true);
    EXPECT_FALSE(manager.isEnabled.value());
}

TEST_F(LoginItemManagerTest, ForgetsTheErrorAfterASuccess) {
    service_.setError("No.");
    LoginItemManager manager(service_);
    manager.setEnabled(true);
    service_.setError(std::nullopt);
    EXPECT_EQ(manager.errorMessage.value(), "No.");
    manager.setEnabled(true);
    EXPECT_EQ(manager.errorMessage.value(), std::nullopt);
}

TEST_F(LoginItemManagerTest, PassesOnWhatChangesNothing) {
    service_.setStatus(LoginServiceStatus::enabled);
    service_.setError("It is registered already.");
    LoginItemManager manager(service_);
    manager.setEnabled(true);
    EXPECT_EQ(service_.changeCount(), 1);
    EXPECT_EQ(manager.errorMessage.value(), "It is registered already.");
}

TEST_F(LoginItemManagerTest, TellsTheErrorBeforeTheState) {
    service_.setStatus(LoginServiceStatus::enabled);
    LoginItemManager manager(service_);
    std::vector<std::string> log;
    const auto error = manager.errorMessage.publisher().dropFirst().sink(
        [&log](const auto& message) { log.push_back(message.value_or("none")); });
    const auto state = manager.isEnabled.publisher().dropFirst().sink(
        [&log](bool enabled) { log.emplace_back(enabled ? "on" : "off"); });
    manager.setEnabled(false);
    EXPECT_EQ(log, (std::vector<std::string>{"none", "off"}));
}

TEST_F(LoginItemManagerTest, DoesNotNoticeChangesMadeElsewhereUntilItIsRefreshed) {
    LoginItemManager manager(service_);
    service_.setStatus(LoginServiceStatus::enabled);
    EXPECT_FALSE(manager.isEnabled.value());
    manager.refresh();
    EXPECT_TRUE(manager.isEnabled.value());
}

}  // namespace
}  // namespace velmo
