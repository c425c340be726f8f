// Plays a life of a given seed and length, and tells how it goes.

#include "soak_session.h"

#include <cstdio>
#include <cstdlib>

namespace velmo::desktop {

namespace {

/// Steps from one look at what is held to the next.
constexpr int stepsATurn = 50;
/// From one start of Velmo to the next, in the first half of the time.
constexpr int stepsALife = 300;

unsigned numberFrom(const char* variable, unsigned fallback) {
    const char* text = std::getenv(variable);
    return text ? static_cast<unsigned>(std::strtoul(text, nullptr, 10)) : fallback;
}

class Soak : public SoakSession {
protected:
    /// Before anything can fail.
    static void tellHowToRepeat(unsigned seed, std::chrono::seconds time) {
        const auto minutes = std::chrono::ceil<std::chrono::minutes>(time).count();
        std::printf("script/soak %ld %u plays this again\n", static_cast<long>(minutes), seed);
        std::fflush(stdout);
    }
    void tell(int step, unsigned seed) const {
        std::printf("seed %u, step %d: %s\n", seed, step, lastAction().c_str());
        std::fflush(stdout);
    }
    /// Of the latest rest.
    void tellFigures(int step) const {
        std::printf("%d steps: %s\n", step, figures().c_str());
        std::fflush(stdout);
    }
    static std::chrono::steady_clock::time_point now() { return std::chrono::steady_clock::now(); }
};

TEST_F(Soak, LosesNoItemKeepsOrderAndLevelAndHoldsNoMore) {
    const auto seed = numberFrom("VELMO_SOAK_SEED", 1);
    const auto seconds = std::chrono::seconds(numberFrom("VELMO_SOAK_SECONDS", 6));
    tellHowToRepeat(seed, seconds);
    begin(seed);
    tellFigures(0);
    const auto start = now();
    int number = 0;
    while (!HasFailure() && now() < start + seconds) {
        ++number;
        // What comes slowly shows in a life that lasts.
        if (number % stepsALife == 0 && now() < start + seconds / 2)
            startAnew();
        else if (number % stepsATurn == 0)
            rest();
        else
            step();
        if (number % stepsATurn == 0)
            tellFigures(number);
    }
    if (!HasFailure())
        rest();
    if (HasFailure()) {
        tell(number, seed);
        tellHowToRepeat(seed, seconds);
        return;
    }
    tellFigures(number);
    std::string times;
    for (const auto& [name, count] : actionCounts())
        times += (times.empty() ? "" : ", ") + name + " " + std::to_string(count);
    std::printf("%d steps: %s\n", number, times.c_str());
}

}  // namespace

}  // namespace velmo::desktop
