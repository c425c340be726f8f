#include "linux/event_loop/event_loop.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <array>
#include <chrono>
#include <limits>

namespace velmo {

namespace {

using std::chrono::steady_clock;

double secondsSince(steady_clock::time_point start) {
    return std::chrono::duration<double>(steady_clock::now() - start).count();
}

TEST(EventLoop, RunsPostedWorkInOrderAndLaterWorkInALaterTurn) {
    EventLoop loop;
    std::string order;
    loop.post([&] {
        order += "1";
        loop.post([&] {
            order += "3";
            loop.stop();
        });
    });
    loop.post([&] { order += "2"; });
    loop.run();
    EXPECT_EQ(order, "123");
}

TEST(EventLoop, RunsTimersWhenTheyAreDueAndInOrder) {
    EventLoop loop;
    std::string order;
    const auto start = steady_clock::now();
    loop.schedule(0.05, [&] {
        order += "2";
        loop.stop();
    });
    loop.schedule(0.02, [&] { order += "1"; });
    loop.run();
    EXPECT_EQ(order, "12");
    EXPECT_GE(secondsSince(start), 0.05);
}

TEST(EventLoop, InvalidatedTimerDoesNotRun) {
    EventLoop loop;
    bool ran = false;
    const auto timer = loop.schedule(0.01, [&] { ran = true; });
    EXPECT_TRUE(timer->isValid());
    timer->invalidate();
    EXPECT_FALSE(timer->isValid());
    loop.schedule(0.03, [&] { loop.stop(); });
    loop.run();
    EXPECT_FALSE(ran);
}

TEST(EventLoop, TimerRunsThoughNobodyKeepsItsHandle) {
    EventLoop loop;
    loop.schedule(0.001, [&] { loop.stop(); });
    loop.run();
}

TEST(EventLoop, TimerIsSpentOnceItsWorkBegins) {
    EventLoop loop;
    std::shared_ptr<Timer> timer;
    bool validInside = true;
    timer = loop.schedule(0, [&] {
        validInside = timer->isValid();
        loop.stop();
    });
    loop.run();
    EXPECT_FALSE(validInside);
}

TEST(EventLoop, ReportsReadableDescriptorsUntilTheSourceEnds) {
    EventLoop loop;
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe(ends.data()), 0);
    int reports = 0;
    Registration source = loop.addSource(ends[0], [&] {
        if (++reports == 2) {
            source = {};
            loop.schedule(0.02, [&] { loop.stop(); });
        }
    });
    ASSERT_EQ(write(ends[1], "x", 1), 1);
    loop.run();
    EXPECT_EQ(reports, 2) << "unread, it stays readable; ended, nobody hears of it";
    close(ends[0]);
    close(ends[1]);
}

TEST(EventLoop, StoppedBeforeASleepItDoesNotSleep) {
    EventLoop loop;
    const auto work = loop.addBeforeSleep([&] { loop.stop(); });
    loop.run();
}

TEST(EventLoop, IntervalsBeyondAllMeasureAreLong) {
    EventLoop loop;
    bool ran = false;
    for (const double interval : {1e300, std::numeric_limits<double>::infinity()})
        loop.schedule(interval, [&] { ran = true; });
    loop.schedule(0.02, [&] { loop.stop(); });
    loop.run();
    EXPECT_FALSE(ran);
    loop.schedule(std::numeric_limits<double>::quiet_NaN(), [&] { loop.stop(); });
    loop.run();
}

TEST(EventLoop, RunsInsideOfItsOwnWork) {
    EventLoop loop;
    std::string order;
    loop.post([&] {
        order += "a";
        bool inside = true;
        loop.schedule(0.01, [&] {
            order += "b";
            inside = false;
        });
        loop.runWhile([&] { return inside; });
        order += "d";
        loop.stop();
    });
    loop.post([&] { order += "c"; });
    loop.run();
    EXPECT_EQ(order, "acbd") << "other work goes on meanwhile";
}

TEST(EventLoop, TimerThatMayBeLateWaitsForTheNextOneThatIsDueByThen) {
    EventLoop loop;
    double ranAfter = 0;
    const auto start = steady_clock::now();
    const auto tolerant = loop.scheduleRepeating(0.05, 0.05, [&] { ranAfter = secondsSince(start); });
    loop.schedule(0.09, [&] { loop.stop(); });
    loop.run();
    EXPECT_GE(ranAfter, 0.09);
}

TEST(EventLoop, TimerIsNoLaterThanItBears) {
    EventLoop loop;
    std::string order;
    loop.scheduleRepeating(0.1, 0.05, [&] { order += "t"; });
    loop.schedule(0.7, [&] { loop.stop(); });
    int sleeps = 0;
    const auto counter = loop.addBeforeSleep([&] { ++sleeps; });
    loop.run();
    EXPECT_EQ(order.front(), 't');
    EXPECT_GE(sleeps, 2) << "not put off until the other one";
}

TEST(EventLoop, WorkThatIsRepeatedAsOftenSharesItsBeat) {
    EventLoop loop;
    std::string order;
    int sleeps = 0;
    loop.scheduleRepeating(0.1, 0, [&] { order += "a"; });
    const auto counter = loop.addBeforeSleep([&] { ++sleeps; });
    loop.schedule(0.04, [&] {
        loop.scheduleRepeating(0.1, 0, [&] { order += "b"; });
        loop.scheduleRepeating(0.25, 0, [&] { order += "c"; });
        sleeps = 0;
    });
    loop.schedule(0.25, [&] { loop.stop(); });
    loop.run();
    EXPECT_EQ(order, "abab") << "c comes after the interval of its own, at 0.29";
    EXPECT_LE(sleeps, 4) << "before both beats and the end; with beats of their own it would be two more";
}

TEST(EventLoop, WorkThatIsRepeatedAsOftenAsWorkThatHasEndedHasABeatOfItsOwn) {
    EventLoop loop;
    double ranAfter = 0;
    const auto ended = loop.scheduleRepeating(0.1, 0, [] {});
    loop.schedule(0.05, [&] {
        ended->invalidate();
        const auto start = steady_clock::now();
        loop.scheduleRepeating(0.1, 0, [&, start] {
            ranAfter = secondsSince(start);
            loop.stop();
        });
    });
    loop.run();
    EXPECT_GE(ranAfter, 0.1);
}

TEST(EventLoop, WorkBeforeSleepRunsBeforeEachWait) {
    EventLoop loop;
    int runs = 0;
    const auto work = loop.addBeforeSleep([&] { ++runs; });
    loop.schedule(0.01, [&] { loop.stop(); });
    loop.run();
    EXPECT_GE(runs, 1);
    EXPECT_LE(runs, 5) << "it sleeps in between";
}

}  // namespace

}  // namespace velmo
