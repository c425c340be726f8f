#pragma once

#include "beside.h"
#include "bus_program.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <string>
#include <thread>

namespace velmo::desktop {

/// Asks Velmo for a sign of life again and again, also while a menu is open, which no click gets past.
class Heartbeat {
public:
    explicit Heartbeat(const std::string& address) : asking_(address) {}

    /// Milliseconds that the longest answer took. Ends the questions.
    double longest() {
        questions_.end();
        return longest_;
    }

private:
    void ask() {
        using Clock = std::chrono::steady_clock;
        const auto start = Clock::now();
        EXPECT_TRUE(asking_.ping("org.kde.StatusNotifierWatcher"));
        const std::chrono::duration<double, std::milli> passed = Clock::now() - start;
        longest_ = std::max(longest_, passed.count());
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }

    BusProgram asking_;
    double longest_ = 0;
    Beside questions_{Beside::Times::untilTheEnd, [this] { ask(); }};
};

}  // namespace velmo::desktop
