#include "linux/event_loop/paced_work.h"
#include "simulated/simulated_run_loop.h"

#include <gtest/gtest.h>

namespace velmo {

namespace {

class Paced : public testing::Test {
protected:
    SimulatedRunLoop loop_;
    int rounds_ = 0;
    PacedWork work_{loop_, 0.5, [this] { ++rounds_; }};
};

TEST_F(Paced, WorkIsDoneInALaterTurnAndOnceForManyRequests) {
    work_.request();
    work_.request();
    EXPECT_EQ(rounds_, 0);
    loop_.advance(0);
    EXPECT_EQ(rounds_, 1);
    loop_.advance(10);
    EXPECT_EQ(rounds_, 1);
}

TEST_F(Paced, WorkThatIsCausedInThePauseWaitsForItsEnd) {
    work_.request();
    loop_.advance(0.1);
    ASSERT_EQ(rounds_, 1);
    work_.request();
    work_.request();
    loop_.advance(0.399);
    EXPECT_EQ(rounds_, 1);
    loop_.advance(0.002);
    EXPECT_EQ(rounds_, 2);
    loop_.advance(0.6);
    work_.request();
    loop_.advance(0);
    EXPECT_EQ(rounds_, 3) << "the pause was over";
}

TEST_F(Paced, WorkCausesItselfInTheSamePace) {
    PacedWork again(loop_, 0.5, [&] {
        ++rounds_;
        again.request();
    });
    again.request();
    loop_.advance(0.25);
    EXPECT_EQ(rounds_, 1);
    loop_.advance(2);
    EXPECT_EQ(rounds_, 5);
}

TEST_F(Paced, WorkMayBeDoneSomeTimesAtOnce) {
    PacedWork often(
        loop_, 0.5, [this] { ++rounds_; }, 3);
    const auto causeAndTurn = [&] {
        often.request();
        loop_.advance(0);
        return rounds_;
    };
    EXPECT_EQ(causeAndTurn(), 1);
    EXPECT_EQ(causeAndTurn(), 2);
    EXPECT_EQ(causeAndTurn(), 3);
    EXPECT_EQ(causeAndTurn(), 3);
    loop_.advance(0.499);
    EXPECT_EQ(rounds_, 3);
    loop_.advance(0.002);
    EXPECT_EQ(rounds_, 4);
    EXPECT_EQ(causeAndTurn(), 4) << "one for a pause";
    loop_.advance(0.51);
    ASSERT_EQ(rounds_, 5);
    loop_.advance(1.01);
    EXPECT_EQ(causeAndTurn(), 6);
    EXPECT_EQ(causeAndTurn(), 7) << "two for two pauses";
    EXPECT_EQ(causeAndTurn(), 7);
    loop_.advance(100);
    ASSERT_EQ(rounds_, 8);
    EXPECT_EQ(causeAndTurn(), 9);
    EXPECT_EQ(causeAndTurn(), 10);
    EXPECT_EQ(causeAndTurn(), 11);
    EXPECT_EQ(causeAndTurn(), 11) << "never more than that";
}

TEST_F(Paced, WorkOfSomebodyWhoHasGoneIsNotDone) {
    {
        PacedWork gone(loop_, 0.5, [this] { ++rounds_; });
        gone.request();
    }
    loop_.advance(1);
    EXPECT_EQ(rounds_, 0);
}

}  // namespace

}  // namespace velmo
