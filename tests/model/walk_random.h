#pragma once

#include <cstddef>
#include <cstdint>
#include <random>

namespace velmo {

/// Random choices that come out the same with every standard library.
class WalkRandom {
public:
    explicit WalkRandom(std::uint64_t seed) : engine_(seed) {}

    /// 0 to `count` - 1.
    std::size_t below(std::size_t count) { return engine_() % count; }
    bool chance(unsigned percent) { return below(100) < percent; }
    template <typename Choices>
    auto pick(const Choices& choices) {
        return choices[below(choices.size())];
    }
    /// A whole number from `low` to `high`.
    double whole(int low, int high) {
        const int count = high - low + 1;
        return low + static_cast<double>(below(static_cast<std::size_t>(count)));
    }

private:
    std::mt19937_64 engine_;
};

}  // namespace velmo
