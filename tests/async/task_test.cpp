#include "async/task.h"

#include "async/completion.h"
#include "async/sleep.h"
#include "async/task_scope.h"
#include "async/when_all.h"
#include "platform/simulated/simulated_run_loop.h"

#include <gtest/gtest.h>

#include <malloc.h>
#include <stdexcept>
#include <string>

namespace velmo {
namespace {

/// Tells a log when it goes away.
class Witness {
public:
    Witness(std::string& log, std::string name) : log_(log), name_(std::move(name)) {}
    Witness(const Witness&) = delete;
    Witness& operator=(const Witness&) = delete;
    ~Witness() { log_ += "~" + name_ + " "; }

private:
    std::string& log_;
    std::string name_;
};

class TaskTest : public testing::Test {
protected:
    Task<> sleepAndTell(Seconds duration, const char* name) {
        const Witness witness(log_, name);
        const bool isWhole = co_await Sleep(loop_, duration);
        log_ += std::string(name) + (isWhole ? " " : "! ");
    }

    Task<int> sleepAndGive(Seconds duration, int result) {
        co_await Sleep(loop_, duration);
        log_ += std::to_string(result) + " ";
        co_return result;
    }

    Task<int> give(int result) { co_return result; }

    Task<int> receive() {
        const int received = co_await Completion<int>(
            [this](Completion<int>::Callback callback) { callback_ = std::move(callback); });
        log_ += std::to_string(received) + " ";
        co_return received;
    }

    Task<> hold(Task<int> task) {
        const Witness witness(log_, "outer");
        const int result = co_await std::move(task);
        log_ += "=" + std::to_string(result) + " ";
    }

    Task<> gather(std::vector<Task<int>> tasks) {
        const Witness witness(log_, "outer");
        const auto results = co_await WhenAll<int>(std::move(tasks));
        log_ += "=";
        for (const int result : results)
            log_ += std::to_string(result) + " ";
    }

    Task<> sleepTwice() {
        co_await Sleep(loop_, 1);
        const bool isWhole = co_await Sleep(loop_, 1);
        log_ += isWhole ? "whole " : "cut ";
    }

    Task<> endScope() {
        const Witness witness(log_, "task");
        scope_.reset();
        log_ += "still running ";
        co_await Sleep(loop_, 1);
        log_ += "not reached ";
    }

    Task<> endScopeAtLast() {
        scope_.reset();
        co_return;
    }

    /// What is allocated, in bytes. 0 where the allocator does not tell.
    static std::size_t allocated() { return mallinfo2().uordblks; }

    std::string log_;
    Completion<int>::Callback callback_;
    SimulatedRunLoop loop_;
    std::optional<TaskScope> scope_{std::in_place, loop_};
};

TEST_F(TaskTest, BeginsInALaterTurnOfTheLoop) {
    const auto handle = scope_->start(hold(give(3)));
    EXPECT_EQ(log_, "");
    EXPECT_TRUE(handle.isRunning());
    loop_.runPosted();
    EXPECT_EQ(log_, "=3 ~outer ");
    EXPECT_FALSE(handle.isRunning());
}

TEST_F(TaskTest, DoesNothingUnlessStarted) {
    { const auto task = hold(give(3)); }
    EXPECT_EQ(log_, "");
}

TEST_F(TaskTest, SleepsUntilItsMomentAndNotBefore) {
    scope_->start(sleepAndTell(0.4, "a"));
    loop_.advance(0.399);
    EXPECT_EQ(log_, "");
    loop_.advance(0.001);
    EXPECT_EQ(log_, "a ~a ");
    EXPECT_EQ(loop_.timerCount(), 0U);
}

TEST_F(TaskTest, SleepsOnTheMonotonicClock) {
    scope_->start(sleepAndTell(0.4, "a"));
    loop_.runPosted();
    loop_.setNow(1e9);
    loop_.advance(0.399);
    EXPECT_EQ(log_, "");
    loop_.advance(0.001);
    EXPECT_EQ(log_, "a ~a ");
}

TEST_F(TaskTest, AwaitsAnotherTaskAndItsSleep) {
    scope_->start(hold(sleepAndGive(1, 5)));
    loop_.advance(0.999);
    EXPECT_EQ(log_, "");
    loop_.advance(0.001);
    EXPECT_EQ(log_, "5 =5 ~outer ");
}

TEST_F(TaskTest, CancellationWakesASleeperInALaterTurn) {
    auto handle = scope_->start(sleepAndTell(0.4, "a"));
    loop_.advance(0.1);
    handle.cancel();
    EXPECT_EQ(loop_.timerCount(), 0U);
    EXPECT_EQ(log_, "");
    loop_.runPosted();
    EXPECT_EQ(log_, "a! ~a ");
    handle.cancel();
    loop_.advance(1);
    EXPECT_EQ(log_, "a! ~a ");
}

TEST_F(TaskTest, CancellationBeforeTheStartLeavesTheSleepOut) {
    auto handle = scope_->start(sleepAndTell(0.4, "a"));
    handle.cancel();
    loop_.runPosted();
    EXPECT_EQ(log_, "a! ~a ");
    EXPECT_EQ(loop_.timerCount(), 0U);
}

TEST_F(TaskTest, CancellationWinsWhereItComesAtTheVeryMoment) {
    TaskHandle handle;
    loop_.schedule(0.4, [&handle] { handle.cancel(); });
    handle = scope_->start(sleepAndTell(0.4, "a"));
    loop_.advance(0.4);
    EXPECT_EQ(log_, "a! ~a ");
}

TEST_F(TaskTest, CancellationReachesTheTasksThatAreAwaited) {
    std::vector<Task<int>> tasks;
    tasks.push_back(sleepAndGive(1, 1));
    tasks.push_back(sleepAndGive(2, 2));
    auto handle = scope_->start(gather(std::move(tasks)));
    loop_.runPosted();
    handle.cancel();
    loop_.runPosted();
    EXPECT_EQ(log_, "1 2 =1 2 ~outer ");
    EXPECT_EQ(loop_.elapsed(), 0);
}

TEST_F(TaskTest, CancellationIsSeenByLaterSleepsToo) {
    auto handle = scope_->start(sleepTwice());
    loop_.runPosted();
    handle.cancel();
    loop_.runPosted();
    EXPECT_EQ(log_, "cut ");
}

TEST_F(TaskTest, CancellationDoesNotCutACompletionShort) {
    auto handle = scope_->start(hold(receive()));
    loop_.runPosted();
    handle.cancel();
    loop_.advance(1);
    EXPECT_EQ(log_, "");
    callback_(7);
    EXPECT_EQ(log_, "7 =7 ~outer ");
}

TEST_F(TaskTest, TakesTheFirstCompletionOnly) {
    scope_->start(hold(receive()));
    loop_.runPosted();
    callback_(1);
    callback_(2);
    EXPECT_EQ(log_, "1 =1 ~outer ");
}

TEST_F(TaskTest, TakesACompletionThatComesAtOnce) {
    const auto immediate = [](std::string& log) -> Task<> {
        const int received = co_await Completion<int>([](const Completion<int>::Callback& callback) {
            callback(4);
            callback(5);
        });
        log += std::to_string(received);
    };
    scope_->start(immediate(log_));
    loop_.runPosted();
    EXPECT_EQ(log_, "4");
}

TEST_F(TaskTest, ToleratesACompletionAfterTheTaskIsGone) {
    scope_->start(hold(receive()));
    loop_.runPosted();
    scope_.reset();
    EXPECT_EQ(log_, "~outer ");
    callback_(1);
    EXPECT_EQ(log_, "~outer ");
}

TEST_F(TaskTest, AwaitsSeveralThatEndInAnyOrder) {
    std::vector<Task<int>> tasks;
    tasks.push_back(sleepAndGive(3, 1));
    tasks.push_back(sleepAndGive(1, 2));
    tasks.push_back(give(3));
    tasks.push_back(sleepAndGive(2, 4));
    scope_->start(gather(std::move(tasks)));
    loop_.advance(2.999);
    EXPECT_EQ(log_, "2 4 ");
    loop_.advance(0.001);
    EXPECT_EQ(log_, "2 4 1 =1 2 3 4 ~outer ");
}

TEST_F(TaskTest, AwaitsSeveralThatEndAtOnce) {
    std::vector<Task<int>> tasks;
    tasks.push_back(give(1));
    tasks.push_back(give(2));
    scope_->start(gather(std::move(tasks)));
    loop_.runPosted();
    EXPECT_EQ(log_, "=1 2 ~outer ");
}

TEST_F(TaskTest, AwaitsNone) {
    scope_->start(gather({}));
    loop_.runPosted();
    EXPECT_EQ(log_, "=~outer ");
}

TEST_F(TaskTest, RunsSeveralSideBySide) {
    scope_->start(sleepAndTell(2, "a"));
    auto handle = scope_->start(sleepAndTell(1, "b"));
    scope_->start(sleepAndTell(3, "c"));
    loop_.advance(2);
    handle.cancel();
    EXPECT_EQ(log_, "b ~b a ~a ");
    loop_.advance(1);
    EXPECT_EQ(log_, "b ~b a ~a c ~c ");
}

TEST_F(TaskTest, EndsWithItsScopeBeforeItHasBegun) {
    scope_->start(sleepAndTell(1, "a"));
    scope_.reset();
    loop_.advance(2);
    EXPECT_EQ(log_, "");
}

TEST_F(TaskTest, EndsWithItsScopeWhileItSleeps) {
    std::vector<Task<int>> tasks;
    tasks.push_back(sleepAndGive(1, 1));
    tasks.push_back(receive());
    const auto handle = scope_->start(gather(std::move(tasks)));
    loop_.runPosted();
    scope_.reset();
    EXPECT_EQ(log_, "~outer ");
    EXPECT_EQ(loop_.timerCount(), 0U);
    EXPECT_FALSE(handle.isRunning());
}

TEST_F(TaskTest, EndsWithItsScopeBetweenCancellationAndWaking) {
    auto handle = scope_->start(sleepAndTell(1, "a"));
    loop_.runPosted();
    handle.cancel();
    scope_.reset();
    handle.cancel();
    loop_.runPosted();
    EXPECT_EQ(log_, "~a ");
}

TEST_F(TaskTest, EndsAtItsNextWaitWhereItEndsItsOwnScope) {
    scope_->start(endScope());
    loop_.advance(2);
    EXPECT_EQ(log_, "still running ~task ");
    EXPECT_EQ(loop_.timerCount(), 0U);
}

TEST_F(TaskTest, MayEndItsOwnScopeAsItsLastDeed) {
    scope_->start(endScopeAtLast());
    loop_.runPosted();
    EXPECT_FALSE(scope_.has_value());
}

TEST_F(TaskTest, ToleratesThatTheLoopEndsFirst) {
    auto loop = std::make_unique<SimulatedRunLoop>();
    const auto sleeper = [](RunLoop& on) -> Task<> { co_await Sleep(on, 1); };
    {
        TaskScope scope(*loop);
        auto handle = scope.start(sleeper(*loop));
        loop->runPosted();
        scope.start(sleeper(*loop));
        loop.reset();
        EXPECT_TRUE(handle.isRunning());
    }
    EXPECT_EQ(loop, nullptr);
}

TEST_F(TaskTest, LetsAnExceptionOutLikeAnyCallback) {
    const auto failing = [](RunLoop& loop) -> Task<int> {
        co_await Sleep(loop, 1);
        throw std::runtime_error("failed");
    };
    const auto handle = scope_->start(hold(failing(loop_)));
    EXPECT_THROW(loop_.advance(1), std::runtime_error);
    EXPECT_TRUE(handle.isRunning());
    scope_.reset();
    EXPECT_EQ(log_, "~outer ");
}

TEST_F(TaskTest, EndsWithItsScopeEvenIfSomebodyStillHoldsIt) {
    const auto handle = scope_->start(endScope());
    loop_.runPosted();
    EXPECT_EQ(log_, "still running ~task ");
    EXPECT_FALSE(handle.isRunning());
}

TEST_F(TaskTest, HoldsNothingOfTasksThatAreOver) {
    const auto run = [this] {
        scope_->start(hold(give(3)));
        loop_.runPosted();
        log_.clear();
    };
    run();
    const auto before = allocated();
    for (int i = 0; i < 1000; ++i)
        run();
    EXPECT_LE(allocated(), before + 1000);
}

TEST_F(TaskTest, ForgetsTasksThatAreOver) {
    const auto first = scope_->start(sleepAndTell(0, "a"));
    loop_.advance(0);
    EXPECT_FALSE(first.isRunning());
    TaskHandle none;
    none.cancel();
    EXPECT_FALSE(none.isRunning());
}

}  // namespace
}  // namespace velmo
