#include "macos/services/macos_run_loop.h"
#include "platform/macos/macos_test.h"

#include <chrono>
#include <memory>
#include <vector>

namespace velmo::macos {
namespace {

class MacosRunLoopTest : public MacosTest {
protected:
    MacosRunLoop loop;
    std::vector<int> done;
};

TEST_F(MacosRunLoopTest, RunsPostedWorkInALaterTurnInItsOrder) {
    for (int number = 1; number <= 3; ++number)
        loop.post([this, number] { done.push_back(number); });
    EXPECT_TRUE(done.empty());
    EXPECT_EQ(system.queuedBlocks, 3);
    EXPECT_TRUE(runUntil([this] { return done.size() == 3; }));
    EXPECT_EQ(done, (std::vector{1, 2, 3}));
}

TEST_F(MacosRunLoopTest, RunsWhatPostedWorkPostsAfterEverythingPostedBefore) {
    loop.post([this] {
        done.push_back(1);
        loop.post([this] { done.push_back(3); });
    });
    loop.post([this] { done.push_back(2); });
    EXPECT_TRUE(runUntil([this] { return done.size() == 3; }));
    EXPECT_EQ(done, (std::vector{1, 2, 3}));
}

TEST_F(MacosRunLoopTest, GoesOnInsideOfATimersWorkThatWaits) {
    loop.schedule(0, [this] {
        loop.post([this] { done.push_back(1); });
        EXPECT_TRUE(runUntil([this] { return !done.empty(); }));
        done.push_back(2);
    });
    EXPECT_TRUE(runUntil([this] { return done.size() == 2; }));
    EXPECT_EQ(done, (std::vector{1, 2}));
}

TEST_F(MacosRunLoopTest, HasTimersGoOnInsideOfPostedWorkThatWaits) {
    loop.post([this] {
        loop.schedule(0.01, [this] { done.push_back(1); });
        EXPECT_TRUE(runUntil([this] { return !done.empty(); }));
        done.push_back(2);
    });
    EXPECT_TRUE(runUntil([this] { return done.size() == 2; }));
    EXPECT_EQ(done, (std::vector{1, 2}));
}

TEST_F(MacosRunLoopTest, DropsPostedWorkWhenItGoes) {
    auto other = std::make_unique<MacosRunLoop>();
    other->post([this] { done.push_back(1); });
    other.reset();
    runFor(0.05);
    EXPECT_TRUE(done.empty());
}

TEST_F(MacosRunLoopTest, RunsScheduledWorkOnceAndNotBeforeItsTime) {
    const auto start = std::chrono::steady_clock::now();
    std::chrono::duration<double> waited{0};
    const auto timer = loop.schedule(0.1, [&] {
        done.push_back(1);
        waited = std::chrono::steady_clock::now() - start;
    });
    EXPECT_TRUE(timer->isValid());
    EXPECT_TRUE(runUntil([this] { return !done.empty(); }));
    EXPECT_GE(waited.count(), 0.095);
    EXPECT_FALSE(timer->isValid());
    runFor(0.25);
    EXPECT_EQ(done.size(), 1U);
}

TEST_F(MacosRunLoopTest, RunsScheduledWorkWhoseHandleWasLetGo) {
    loop.schedule(0.01, [this] { done.push_back(1); });
    EXPECT_TRUE(runUntil([this] { return !done.empty(); }));
}

TEST_F(MacosRunLoopTest, TakesATimerForEndedWhileItsWorkRuns) {
    std::shared_ptr<Timer> timer;
    bool wasValid = true;
    timer = loop.schedule(0, [&] {
        wasValid = timer->isValid();
        done.push_back(1);
    });
    EXPECT_TRUE(runUntil([this] { return !done.empty(); }));
    EXPECT_FALSE(wasValid);
}

TEST_F(MacosRunLoopTest, RunsNoWorkThatWasInvalidated) {
    const auto timer = loop.schedule(0.02, [this] { done.push_back(1); });
    timer->invalidate();
    timer->invalidate();
    EXPECT_FALSE(timer->isValid());
    runFor(0.1);
    EXPECT_TRUE(done.empty());
}

TEST_F(MacosRunLoopTest, RepeatsUntilInvalidated) {
    const auto timer = loop.scheduleRepeating(0.02, 0.1, [this] { done.push_back(1); });
    EXPECT_EQ(system.timerIntervals, std::vector{0.02});
    EXPECT_EQ(system.timerTolerances, std::vector{0.1});
    EXPECT_TRUE(runUntil([this] { return done.size() == 3; }));
    EXPECT_TRUE(timer->isValid());
    timer->invalidate();
    runFor(0.1);
    EXPECT_EQ(done.size(), 3U);
}

TEST_F(MacosRunLoopTest, KeepsTheProgramFromBeingSlowedDownWhileATimerIsPending) {
    const auto once = loop.schedule(0.02, [this] { done.push_back(1); });
    const auto repeated = loop.scheduleRepeating(60, 0, [] {});
    // One is enough for both.
    ASSERT_EQ(system.activities.size(), 1U);
    EXPECT_EQ(system.activities[0].options, 0x00efffffU);
    EXPECT_FALSE(system.activities[0].reason.empty());
    EXPECT_TRUE(runUntil([this] { return !done.empty(); }));
    EXPECT_EQ(system.activities.size(), 1U);
    repeated->invalidate();
    EXPECT_TRUE(system.activities.empty());
}

TEST_F(MacosRunLoopTest, KeepsNothingFromBeingSlowedDownThatIsDueAtOnce) {
    loop.post([this] { done.push_back(1); });
    loop.schedule(0, [this] { done.push_back(2); });
    EXPECT_TRUE(system.activities.empty());
    EXPECT_TRUE(runUntil([this] { return done.size() == 2; }));
}

TEST_F(MacosRunLoopTest, LetsRepeatedWorkInvalidateItsOwnTimer) {
    std::shared_ptr<Timer> timer;
    const auto kept = std::make_shared<int>(0);
    timer = loop.scheduleRepeating(0.01, 0, [&timer, kept] {
        timer->invalidate();
        timer.reset();
        ++*kept;
    });
    EXPECT_TRUE(runUntil([&] { return *kept == 1; }));
    runFor(0.05);
    EXPECT_EQ(*kept, 1);
    EXPECT_EQ(kept.use_count(), 1);
}

TEST_F(MacosRunLoopTest, LetsGoOfWorkThatHasRunOrWillNot) {
    const auto kept = std::make_shared<int>(0);
    loop.schedule(0, [kept] { ++*kept; });
    const auto never = loop.schedule(60, [kept] { ++*kept; });
    EXPECT_TRUE(runUntil([&] { return *kept == 1; }));
    never->invalidate();
    EXPECT_EQ(kept.use_count(), 1);
}

TEST_F(MacosRunLoopTest, TellsTheTimeOfDay) {
    const double now =
        std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count();
    EXPECT_NEAR(loop.now(), now, 1);
}

}  // namespace
}  // namespace velmo::macos
