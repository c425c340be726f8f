#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace velmo::desktop {

using Clock = std::chrono::steady_clock;

inline double millisecondsSince(Clock::time_point start) {
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

inline void waitFor(const std::function<bool()>& condition, const char* what) {
    const auto start = Clock::now();
    while (!condition()) {
        if (millisecondsSince(start) > 10000)
            throw std::runtime_error(std::string("waited in vain for ") + what);
        std::this_thread::sleep_for(std::chrono::microseconds(100));
    }
}

/// Says whether a figure is what was promised; false where it is not.
inline bool isAtMost(const std::string& what, double value, double bound) {
    std::printf("  %s: %.2f, promised %.2f at most%s\n", what.c_str(), value, bound,
                value <= bound ? "" : "  <-- NOT KEPT");
    return value <= bound;
}

inline double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

inline double percentile95(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() * 95 / 100];
}

}  // namespace velmo::desktop
