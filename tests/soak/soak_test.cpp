#include "soak_session.h"

#include <cstdio>
#include <cstdlib>

namespace velmo::desktop {

namespace {

/// Steps from one look at what is held to the next.
constexpr int stepsATurn = 50;
/// Turns from one start of Velmo to the next.
constexpr int turnsALife = 6;

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
};

TEST_F(Soak, LosesNoItemKeepsOrderAndLevelAndHoldsNoMore) {
    const auto seed = numberFrom("VELMO_SOAK_SEED", 1);
    const auto seconds = std::chrono::seconds(numberFrom("VELMO_SOAK_SECONDS", 12));
    const auto end = std::chrono::steady_clock::now() + seconds;
    tellHowToRepeat(seed, seconds);
    begin(seed);
    int number = 1;
    for (; std::chrono::steady_clock::now() < end; ++number) {
        if (number % (stepsATurn * turnsALife) == 0)
            startAnew();
        else if (number % stepsATurn == 0)
            rest();
        else
            step();
        if (HasFailure()) {
            tell(number, seed);
            tellHowToRepeat(seed, seconds);
            return;
        }
        if (number % stepsATurn == 0 && !figures().empty()) {
            std::printf("%d steps: %s\n", number, figures().c_str());
            std::fflush(stdout);
        }
    }
    std::string times;
    for (const auto& [name, count] : actionCounts())
        times += (times.empty() ? "" : ", ") + name + " " + std::to_string(count);
    std::printf("%d steps: %s\n", number - 1, times.c_str());
}

}  // namespace

}  // namespace velmo::desktop
