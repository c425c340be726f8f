#include "system/permissions_model.h"

#include "platform/simulated/simulated_desktop.h"

#include <gtest/gtest.h>

#include <memory>

namespace velmo {
namespace {

class PermissionsModelTest : public testing::Test {
protected:
    PermissionsModelTest() {
        desktop_.screenCapture().setGranted(false);
        desktop_.accessibility().setTrusted(false);
    }

    void start() { model_ = std::make_unique<PermissionsModel>(desktop_.platform()); }

    SimulatedDesktop desktop_;
    std::unique_ptr<PermissionsModel> model_;
};

TEST_F(PermissionsModelTest, KnowsBothAtOnce) {
    desktop_.accessibility().setTrusted(true);
    start();
    EXPECT_FALSE(model_->screenRecording.value());
    EXPECT_TRUE(model_->accessibility.value());
}

TEST_F(PermissionsModelTest, NoticesWithinASecondWhatTheUserGrants) {
    start();
    desktop_.screenCapture().setGranted(true);
    desktop_.advance(0.999);
    EXPECT_FALSE(model_->screenRecording.value());
    desktop_.advance(0.001);
    EXPECT_TRUE(model_->screenRecording.value());
    EXPECT_FALSE(model_->accessibility.value());
    desktop_.accessibility().setTrusted(true);
    desktop_.advance(1);
    EXPECT_TRUE(model_->accessibility.value());
}

TEST_F(PermissionsModelTest, NoticesWhatTheUserTakesBack) {
    desktop_.screenCapture().setGranted(true);
    start();
    desktop_.advance(5);
    desktop_.screenCapture().setGranted(false);
    desktop_.advance(1);
    EXPECT_FALSE(model_->screenRecording.value());
}

TEST_F(PermissionsModelTest, PublishesEachLookWhetherOrNotAnythingChanged) {
    start();
    int published = 0;
    const auto count = [&published](bool) { ++published; };
    const auto first = model_->screenRecording.publisher().dropFirst().sink(count);
    const auto second = model_->accessibility.publisher().dropFirst().sink(count);
    model_->refresh();
    EXPECT_EQ(published, 2);
    desktop_.advance(3);
    EXPECT_EQ(published, 8);
}

TEST_F(PermissionsModelTest, StopsLookingOnceItIsGone) {
    start();
    model_.reset();
    EXPECT_EQ(desktop_.runLoop().timerCount(), 0U);
    desktop_.advance(2);
}

TEST_F(PermissionsModelTest, AsksForPicturesAndThenOpensTheirSettings) {
    start();
    std::size_t requestsBefore = 0;
    desktop_.workspace().setOnOpen([&] { requestsBefore = desktop_.screenCapture().requestCount(); });
    model_->grantScreenRecording();
    EXPECT_EQ(requestsBefore, 1U);
    EXPECT_EQ(desktop_.screenCapture().requestCount(), 1U);
    EXPECT_EQ(desktop_.accessibility().promptCount(), 0);
    EXPECT_EQ(desktop_.workspace().opened(),
              std::vector<std::string>{
                  "x-apple.systempreferences:com.apple.preference.security?Privacy_ScreenCapture"});
}

TEST_F(PermissionsModelTest, AsksForClicksAndThenOpensTheirSettings) {
    start();
    int promptsBefore = 0;
    desktop_.workspace().setOnOpen([&] { promptsBefore = desktop_.accessibility().promptCount(); });
    model_->grantAccessibility();
    EXPECT_EQ(promptsBefore, 1);
    EXPECT_EQ(desktop_.accessibility().promptCount(), 1);
    EXPECT_EQ(desktop_.screenCapture().requestCount(), 0U);
    EXPECT_EQ(desktop_.workspace().opened(),
              std::vector<std::string>{
                  "x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility"});
}

TEST_F(PermissionsModelTest, OpensTheSettingsWithoutAsking) {
    start();
    model_->openScreenRecordingSettings();
    model_->openAccessibilitySettings();
    EXPECT_EQ(desktop_.workspace().opened().size(), 2U);
    EXPECT_EQ(desktop_.screenCapture().requestCount(), 0U);
    EXPECT_EQ(desktop_.accessibility().promptCount(), 0);
}

}  // namespace
}  // namespace velmo
