#pragma once

#include "beside.h"
#include "bus_program.h"

#include <gtest/gtest.h>
#include <sys/types.h>

#include <algorithm>
#include <chrono>
#include <ctime>
#include <string>
#include <thread>

namespace velmo::desktop {

/// Asks a program for a sign of life again and again, also while a menu is open, which no click gets past.
/// How long one takes is counted in what the program itself uses of a processor until it answers: what else
/// the machine does at the same time is not its fault.
class Heartbeat {
public:
    Heartbeat(const std::string& address, pid_t process) : process_(process), asking_(address) {}

    /// Milliseconds of a processor before the longest answer. Ends the questions.
    double longest() {
        questions_.end();
        return longest_;
    }

private:
    void ask() {
        using Clock = std::chrono::steady_clock;
        const auto start = Clock::now();
        const double before = used();
        EXPECT_TRUE(asking_.ping("org.kde.StatusNotifierWatcher"));
        longest_ = std::max(longest_, used() - before);
        EXPECT_LT(Clock::now() - start, std::chrono::seconds(1)) << "nor does it wait for anybody";
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }

    double used() const {
        clockid_t clock{};
        timespec time{};
        EXPECT_EQ(clock_getcpuclockid(process_, &clock), 0);
        EXPECT_EQ(clock_gettime(clock, &time), 0);
        return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
    }

    pid_t process_;
    BusProgram asking_;
    double longest_ = 0;
    Beside questions_{Beside::Times::untilTheEnd, [this] { ask(); }};
};

}  // namespace velmo::desktop
