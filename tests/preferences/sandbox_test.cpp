#include "preferences/sandbox.h"

#include "platform/simulated/simulated_process_info.h"

#include <gtest/gtest.h>

#include <atomic>
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

TEST(Sandbox, IsLookedForOnceWhicheverThreadAsksFirst) {
    SimulatedProcessInfo process;
    process.setEnvironment("APP_SANDBOX_CONTAINER_ID", "");
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
    EXPECT_EQ(answers, threadCount);
}

TEST(Sandbox, IsLookedForOnce) {
    SimulatedProcessInfo process;
    process.setEnvironment("APP_SANDBOX_CONTAINER_ID", "");
    EXPECT_TRUE(isSandboxed(process));
    process.setEnvironment("APP_SANDBOX_CONTAINER_ID", std::nullopt);
    EXPECT_TRUE(isSandboxed(process));
}

}  // namespace
}  // namespace velmo
