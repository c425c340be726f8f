#pragma once

#include "model/reveal_model.h"
#include "model/walk_random.h"

namespace velmo {

/// Chooses the next step, preferring what lies close to a boundary of the model's state.
class StepGenerator {
public:
    explicit StepGenerator(std::uint64_t seed) : random_(seed) {}

    ModelPreferences storedPreferences();
    Step next(const RevealModel& model);

private:
    Trigger chooseTrigger(const RevealModel& model);
    void chooseParameters(Step& step, const RevealModel& model);
    void choosePreference(Step& step);
    void choosePlace(Step& step, const RevealModel& model);
    void placeOnBarItem(Step& step, const ModelGeometry& geometry);
    void placeOnScreen(Step& step, const ArrangedScreen& screen);
    void placeOnEdge(Step& step, const ModelGeometry& geometry);
    void chooseShortcut(Step& step, const RevealModel& model);
    MenuPlan chooseMenuPlan(const RevealModel& model);
    void chooseDeltas(Step& step);
    std::int64_t chooseTime(const RevealModel& model);
    static bool hasJustScrolled(const RevealModel& model);
    static std::int64_t timeToScroll(const RevealModel& model);
    ModifierFlags chooseFlags();

    WalkRandom random_;
};

}  // namespace velmo
