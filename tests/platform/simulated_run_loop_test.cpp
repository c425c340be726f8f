#include "platform/simulated/simulated_run_loop.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace velmo {
namespace {

class SimulatedRunLoopTest : public testing::Test {
protected:
    std::function<void()> write(char letter) {
        return [this, letter] { written_ += letter; };
    }

    SimulatedRunLoop loop_;
    std::string written_;
};

TEST_F(SimulatedRunLoopTest, RunsPostedWorkInOrderAndWhatItPosts) {
    loop_.post([this] {
        written_ += 'a';
        loop_.post(write('c'));
    });
    loop_.post(write('b'));
    EXPECT_EQ(written_, "");
    loop_.runPosted();
    EXPECT_EQ(written_, "abc");
}

TEST_F(SimulatedRunLoopTest, RunsTimersAtTheirMomentInTheirOrder) {
    loop_.schedule(2, write('c'));
    loop_.schedule(1, write('a'));
    loop_.schedule(1, write('b'));
    loop_.advance(0.999999999);
    EXPECT_EQ(written_, "");
    loop_.advance(0.000000001);
    EXPECT_EQ(written_, "ab");
    loop_.advance(1);
    EXPECT_EQ(written_, "abc");
}

TEST_F(SimulatedRunLoopTest, RunsWhatATimerPostsBeforeTheNextTimer) {
    loop_.schedule(1, [this] { loop_.post(write('a')); });
    loop_.schedule(1, write('b'));
    loop_.advance(1);
    EXPECT_EQ(written_, "ab");
}

TEST_F(SimulatedRunLoopTest, KeepsTimersWhoseHandlesAreGone) {
    loop_.schedule(1, write('a')).reset();
    loop_.advance(1);
    EXPECT_EQ(written_, "a");
}

TEST_F(SimulatedRunLoopTest, RunsNoInvalidatedTimer) {
    const auto timer = loop_.schedule(1, write('a'));
    EXPECT_TRUE(timer->isValid());
    timer->invalidate();
    timer->invalidate();
    EXPECT_FALSE(timer->isValid());
    EXPECT_EQ(loop_.timerCount(), 0U);
    loop_.advance(2);
    EXPECT_EQ(written_, "");
}

TEST_F(SimulatedRunLoopTest, EndsATimersValidityWhenItsWorkBegins) {
    std::shared_ptr<Timer> timer;
    timer = loop_.schedule(1, [&] {
        written_ += timer->isValid() ? 'v' : 'i';
        timer->invalidate();
    });
    loop_.advance(1);
    EXPECT_EQ(written_, "i");
}

TEST_F(SimulatedRunLoopTest, LetsHandlesOutliveIt) {
    std::shared_ptr<Timer> timer;
    {
        SimulatedRunLoop shortLived;
        timer = shortLived.schedule(1, write('a'));
    }
    EXPECT_FALSE(timer->isValid());
    timer->invalidate();
}

TEST_F(SimulatedRunLoopTest, ShowsATimeOfDayThatCanBeSet) {
    loop_.setNow(1000);
    EXPECT_EQ(loop_.now(), 1000);
    loop_.advance(2.5);
    EXPECT_EQ(loop_.now(), 1002.5);
    EXPECT_EQ(loop_.elapsed(), 2.5);
    EXPECT_GT(loop_.now(), distantPast);
}

TEST_F(SimulatedRunLoopTest, JumpsFromTimerToTimerUntilIdle) {
    loop_.schedule(100, [this] { loop_.schedule(50, write('b')); });
    EXPECT_EQ(loop_.nextTimer(), 100);
    EXPECT_TRUE(loop_.runUntilIdle());
    EXPECT_EQ(written_, "b");
    EXPECT_EQ(loop_.elapsed(), 150);
    EXPECT_EQ(loop_.nextTimer(), std::nullopt);
}

TEST_F(SimulatedRunLoopTest, GivesUpOnWhatNeverBecomesIdle) {
    const std::function<void()> again = [this, &again] { loop_.schedule(1, again); };
    again();
    EXPECT_FALSE(loop_.runUntilIdle(10));
    EXPECT_EQ(loop_.elapsed(), 10);
}

TEST_F(SimulatedRunLoopTest, BearsIntervalsThatAreNoTimes) {
    loop_.schedule(-1, write('a'));
    loop_.schedule(std::numeric_limits<double>::quiet_NaN(), write('b'));
    loop_.schedule(std::numeric_limits<double>::infinity(), write('c'));
    loop_.advance(0);
    EXPECT_EQ(written_, "ab");
    loop_.advance(1e9);
    EXPECT_EQ(written_, "ab");
}

TEST_F(SimulatedRunLoopTest, TellsHowLateItsTimersMayBe) {
    loop_.scheduleRepeating(2, 0.5, write('b'));
    const auto first = loop_.scheduleRepeating(1, 0, write('a'));
    EXPECT_EQ(loop_.tolerances(), (std::vector<Seconds>{0, 0.5}));
    first->invalidate();
    EXPECT_EQ(loop_.tolerances(), std::vector<Seconds>{0.5});
    loop_.advance(2);
    EXPECT_EQ(written_, "b");
}

TEST_F(SimulatedRunLoopTest, FiresATimerAlone) {
    EXPECT_FALSE(loop_.fireNextTimer());
    loop_.post(write('p'));
    loop_.schedule(3, [this] {
        written_ += 't';
        loop_.post(write('q'));
    });
    loop_.schedule(3, write('u'));
    EXPECT_TRUE(loop_.fireNextTimer());
    EXPECT_EQ(written_, "t");
    EXPECT_EQ(loop_.elapsed(), 3);
    EXPECT_EQ(loop_.postedCount(), 2U);
    loop_.advance(0);
    EXPECT_EQ(written_, "tpqu");
}

}  // namespace
}  // namespace velmo
