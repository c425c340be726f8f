#include "model/live_menu_bar.h"
#include "model/step_generator.h"

#include <gtest/gtest.h>
#include <cstdlib>
#include <deque>
#include <iostream>

namespace velmo {

namespace {

constexpr std::uint64_t defaultSeed = 20240607;
constexpr std::uint64_t defaultSteps = 1'000'000;
/// After these the program is started anew, with other preferences.
constexpr std::uint64_t stepsOfOneRun = 20'000;
constexpr std::size_t rememberedSteps = 20;

std::uint64_t numberFromEnvironment(const char* name, std::uint64_t otherwise) {
    const char* text = std::getenv(name);  // NOLINT(concurrency-mt-unsafe)
    return text != nullptr ? std::strtoull(text, nullptr, 10) : otherwise;
}

/// Takes the program and the model through the same steps.
class Walk {
public:
    explicit Walk(std::uint64_t seed) : generator_(seed) {}

    /// Ends the program and starts another one, on a new desktop.
    void start() {
        end();
        const ModelPreferences stored = generator_.storedPreferences();
        model_.emplace(stored);
        live_.emplace(stored);
        lastSteps_.clear();
    }

    void end() {
        if (!model_)
            return;
        for (std::size_t i = 0; i < rowCount; ++i)
            rowsTaken_[i] += model_->taken()[i];
        model_.reset();
        EXPECT_TRUE(live_->end());
        live_.reset();
    }

    /// False where the two differ after the step.
    bool takeStep() {
        const Step step = generator_.next(*model_);
        ++taken_[static_cast<std::size_t>(step.trigger)];
        lastSteps_.push_back(step);
        if (lastSteps_.size() > rememberedSteps)
            lastSteps_.pop_front();
        const bool expectedReached = model_->perform(step);
        const bool seenReached = live_->perform(step);
        return observe(expectedReached, seenReached);
    }

    bool observe(bool expectedReached = true, bool seenReached = true) {
        expected_ = model_->observe();
        expected_.reached = expectedReached;
        seen_ = live_->observe();
        seen_.reached = seenReached;
        return expected_ == seen_;
    }

    std::string history() const {
        std::string text = "last steps:\n";
        for (const Step& step : lastSteps_)
            text += "  " + describe(step) + '\n';
        return text + "model:   " + describe(expected_) + "\nprogram: " + describe(seen_);
    }

    void printCounts() const {
        for (const TriggerInfo& info : triggers)
            std::cout << taken_[static_cast<std::size_t>(info.trigger)] << ' ' << info.name << '\n';
        for (std::size_t i = 0; i < rowCount; ++i)
            std::cout << rowsTaken_[i] << ' ' << describe(revealTable()[i]) << '\n';
    }

    void expectEachTaken(std::uint64_t least) const {
        for (const TriggerInfo& info : triggers)
            EXPECT_GE(taken_[static_cast<std::size_t>(info.trigger)], least) << info.name;
        for (std::size_t i = 0; i < rowCount; ++i)
            EXPECT_GE(rowsTaken_[i], least) << describe(revealTable()[i]);
    }

private:
    StepGenerator generator_;
    std::optional<RevealModel> model_;
    std::optional<LiveMenuBar> live_;
    Observation expected_;
    Observation seen_;
    std::deque<Step> lastSteps_;
    std::array<std::uint64_t, triggers.size()> taken_{};
    std::array<std::uint64_t, rowCount> rowsTaken_{};
};

TEST(RevealModel, programAndModelAgreeAfterEachStep) {
    const auto seed = numberFromEnvironment("VELMO_MODEL_SEED", defaultSeed);
    const auto steps = numberFromEnvironment("VELMO_MODEL_STEPS", defaultSteps);
    std::cout << "seed " << seed << ", " << steps << " steps" << std::endl;
    Walk walk(seed);
    for (std::uint64_t i = 0; i < steps; ++i) {
        if (i % stepsOfOneRun == 0) {
            walk.start();
            if (!walk.observe())
                FAIL() << "seed " << seed << ", start before step " << i + 1 << '\n' << walk.history();
        }
        if (!walk.takeStep())
            FAIL() << "seed " << seed << ", step " << i + 1 << '\n' << walk.history();
    }
    walk.end();
    walk.printCounts();
    // Shorter walks meet the rare rows less often.
    constexpr std::uint64_t share = 10'000;
    walk.expectEachTaken(std::min<std::uint64_t>(100, steps / share));
}

}  // namespace

}  // namespace velmo
