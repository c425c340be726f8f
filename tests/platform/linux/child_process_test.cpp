#include "child_process.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <string>

namespace velmo::desktop {

namespace {

/// A shell starts a program. Both hold one end of a pipe, and the test the other.
class ChildProcessTest : public testing::TestWithParam<std::string> {
protected:
    void SetUp() override { ASSERT_EQ(pipe(ends_.data()), 0); }
    void TearDown() override { close(ends_[0]); }

    /// Returns once the program beside it runs.
    ChildProcess startShell() {
        const auto announce = "echo >/proc/self/fd/" + std::to_string(ends_[1]);
        ChildProcess shell({"sh", "-c", "program() { " + announce + "; exec sleep 60; }; " + GetParam()}, {});
        close(ends_[1]);
        char newline = 0;
        EXPECT_EQ(read(ends_[0], &newline, 1), 1);
        return shell;
    }
    /// True where nobody holds the other end, or lets go of it soon.
    bool isFree(int milliseconds) const {
        pollfd end = {ends_[0], POLLIN, 0};
        return poll(&end, 1, milliseconds) > 0 && (end.revents & POLLHUP) != 0;
    }

private:
    std::array<int, 2> ends_{};
};

INSTANTIATE_TEST_SUITE_P(Shell, ChildProcessTest,
                         testing::Values("program & wait", "program & exit", "trap '' TERM; program & wait"));

TEST(ChildProcessGroup, EndsAlsoWhereItsLeaderWasSeenToEnd) {
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe(ends.data()), 0);
    ChildProcess shell({"sh", "-c", "sleep 60 & exit"}, {});
    close(ends[1]);
    ASSERT_TRUE(shell.wait(std::chrono::seconds(5)).has_value());
    pollfd end = {ends[0], POLLIN, 0};
    EXPECT_EQ(poll(&end, 1, 100), 0);
    shell.end();
    EXPECT_EQ(poll(&end, 1, 3000), 1);
    close(ends[0]);
}

TEST_P(ChildProcessTest, EndsWithWhatItHasStarted) {
    auto shell = startShell();
    EXPECT_FALSE(isFree(100));
    shell.end();
    EXPECT_TRUE(isFree(3000));
}

}  // namespace

}  // namespace velmo::desktop
