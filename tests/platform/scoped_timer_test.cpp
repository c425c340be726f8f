#include "platform/scoped_timer.h"

#include "platform/simulated/simulated_run_loop.h"

#include <gtest/gtest.h>

#include <optional>

namespace velmo {

namespace {

TEST(ScopedTimers, EndWithTheirHolder) {
    SimulatedRunLoop loop;
    int runs = 0;
    std::optional<ScopedTimer> timer(std::in_place);
    *timer = loop.schedule(1, [&] { ++runs; });
    timer.reset();
    loop.advance(1);
    EXPECT_EQ(runs, 0);
    EXPECT_EQ(loop.timerCount(), 0U);
}

TEST(ScopedTimers, EndWhereAnotherTakesTheirPlace) {
    SimulatedRunLoop loop;
    int formers = 0;
    int latters = 0;
    ScopedTimer timer;
    timer = loop.schedule(1, [&] { ++formers; });
    timer = loop.schedule(2, [&] { ++latters; });
    loop.advance(2);
    EXPECT_EQ(formers, 0);
    EXPECT_EQ(latters, 1);
}

TEST(ScopedTimers, AreValidUntilTheirWorkBegins) {
    SimulatedRunLoop loop;
    ScopedTimer timer;
    EXPECT_FALSE(timer.isValid());
    std::optional<bool> whileItRuns;
    timer = loop.schedule(1, [&] { whileItRuns = timer.isValid(); });
    loop.advance(0.99);
    EXPECT_TRUE(timer.isValid());
    loop.advance(0.01);
    EXPECT_EQ(whileItRuns, false);
    EXPECT_FALSE(timer.isValid());
    timer = loop.schedule(1, [] {});
    timer.end();
    EXPECT_FALSE(timer.isValid());
}

TEST(ScopedTimers, MayBeSetAnewByTheirOwnWork) {
    SimulatedRunLoop loop;
    int runs = 0;
    ScopedTimer timer;
    timer = loop.schedule(1, [&] {
        ++runs;
        timer = loop.schedule(1, [&] { ++runs; });
    });
    loop.advance(1);
    EXPECT_EQ(runs, 1);
    loop.advance(1);
    EXPECT_EQ(runs, 2);
}

}  // namespace

}  // namespace velmo
