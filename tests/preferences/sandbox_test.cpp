#include "preferences/sandbox.h"

#include "platform/simulated/simulated_process_info.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <latch>
#include <thread>
#include <vector>

namespace velmo {
namespace {

TEST(Sandbox, IsToldByTheMerePresenceOfAVariable) {
    SimulatedProcessInfo process;
    EXPECT_FALSE(environmentTellsSandbox(process));
    process.setEnvironment("APP_SANDBOX_CONTAINER_ID", "");
    EXPECT_TRUE(environmentTellsSandbox(process));
    process.setEnvironment("APP_SANDBOX_CONTAINER_ID", "velmo");
    EXPECT_TRUE(environmentTellsSandbox(process));
    process.setEnvironment("APP_SANDBOX_CONTAINER_ID", std::nullopt);
    process.setEnvironment("app_sandbox_container_id", "velmo");
    EXPECT_FALSE(environmentTellsSandbox(process));
}

/// The answer of a process in which nobody has asked before.
class SandboxDeathTest : public testing::Test {
protected:
    SandboxDeathTest() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }

    static void endWith(bool isRight) { std::exit(isRight ? EXIT_SUCCESS : EXIT_FAILURE); }
    static bool isSandboxedForAllThreads(const SimulatedProcessInfo& process) {
        constexpr std::size_t threadCount = 8;
        std::latch everyoneIsHere(threadCount);
        std::atomic<std::size_t> answers = 0;
        std::vector<std::thread> threads;
        for (std::size_t i = 0; i < threadCount; ++i) {
            threads.emplace_back([&] {
                everyoneIsHere.arrive_and_wait();
                answers += isSandboxed(process) ? 1 : 0;
            });
        }
        for (auto& thread : threads)
            thread.join();
        return answers == threadCount;
    }

    SimulatedProcessInfo process_;
};

TEST_F(SandboxDeathTest, IsLookedForOnceWhicheverThreadAsksFirst) {
    process_.setEnvironment("APP_SANDBOX_CONTAINER_ID", "");
    EXPECT_EXIT(endWith(isSandboxedForAllThreads(process_)), testing::ExitedWithCode(EXIT_SUCCESS), "");
}

TEST_F(SandboxDeathTest, IsLookedForOnce) {
    const auto asksTwice = [this] {
        process_.setEnvironment("APP_SANDBOX_CONTAINER_ID", "");
        const bool first = isSandboxed(process_);
        process_.setEnvironment("APP_SANDBOX_CONTAINER_ID", std::nullopt);
        endWith(first && isSandboxed(process_));
    };
    EXPECT_EXIT(asksTwice(), testing::ExitedWithCode(EXIT_SUCCESS), "");
}

}  // namespace
}  // namespace velmo
