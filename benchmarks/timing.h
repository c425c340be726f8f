#pragma once

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstddef>
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

/// Looks that often, where to look costs much less.
inline void waitFor(const std::function<bool()>& condition, const std::string& what,
                    std::chrono::microseconds interval = std::chrono::microseconds(100)) {
    const auto start = Clock::now();
    while (!condition()) {
        if (millisecondsSince(start) > 10000)
            throw std::runtime_error("waited in vain for " + what);
        std::this_thread::sleep_for(interval);
    }
}

struct Spread {
    double lowerQuartile = 0;
    double median = 0;
    double upperQuartile = 0;
    double percentile95 = 0;
    double highest = 0;
};

/// Of at least one value.
inline Spread spreadOf(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    const auto at = [&](double part) {
        const double place = part * static_cast<double>(values.size() - 1);
        const auto below = static_cast<std::size_t>(place);
        const auto above = std::min(below + 1, values.size() - 1);
        return std::lerp(values[below], values[above], place - static_cast<double>(below));
    };
    return {at(0.25), at(0.5), at(0.75), at(0.95), values.back()};
}

inline double median(const std::vector<double>& values) {
    return spreadOf(values).median;
}

}  // namespace velmo::desktop
