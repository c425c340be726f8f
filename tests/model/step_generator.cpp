#include "model/step_generator.h"

#include "model/menu_kind.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace velmo {

namespace {

constexpr std::int64_t second = 1'000'000'000;
constexpr std::array<std::int64_t, 9> knownTimes{
    second / 4, second * 35 / 100, second * 4 / 10, second * 6 / 10, second,
    second * 2, second * 3 / 2,    second * 5,      second * 45};
constexpr std::array<double, 12> rehideDelays{-3,  0,   0.2, 0.999999999, 1,  1.000000001,
                                              1.5, 2.0, 5.0, 12.5,        45, 60};
constexpr std::array<ModifierFlags, 7> modifierFlags{
    modifier::capsLock, modifier::shift,      modifier::control, modifier::option,
    modifier::command,  modifier::numericPad, modifier::function};
constexpr std::array<EventType, 7> toggleEvents{
    EventType::leftMouseUp,  EventType::leftMouseUp,  EventType::leftMouseDown, EventType::rightMouseDown,
    EventType::rightMouseUp, EventType::otherMouseUp, EventType::otherMouseDown};
/// Below the top of a screen, off every edge that a menu bar may have.
constexpr std::array<double, 14> depths{0.5,  10.5, 21.5, 22.5, 23.5, 24.5, 25.5,
                                        26.5, 29.5, 30.5, 36.5, 37.5, 39.5, 40.5};
constexpr std::array<Trigger, 6> afterScroll{Trigger::scroll,    Trigger::scroll,          Trigger::runPosted,
                                             Trigger::runPosted, Trigger::handToggleEvent, Trigger::advance};
/// One that tells of failure, one of success without a hot key.
constexpr std::array<double, 2> refusalStatuses{-9878, 0};
constexpr std::array<double, 3> thicknesses{22, 26, 37};
/// Seconds: nothing, what a picture takes, and longer than other waits.
constexpr std::array<double, 5> captureTimes{0, 0, 0.01, 0.2, 0.6};

}  // namespace

Step StepGenerator::next(const RevealModel& model) {
    Step step;
    step.trigger = chooseTrigger(model);
    step.rightButton = random_.chance(25);
    step.flags = chooseFlags();
    step.item = static_cast<OwnItem>(random_.below(ownItemNames.size()));
    step.menu = chooseMenuPlan(model);
    chooseParameters(step, model);
    choosePreference(step);
    chooseShortcut(step, model);
    return step;
}

ModelPreferences StepGenerator::storedPreferences() {
    return {.autoRehide = random_.chance(50),
            .rehideDelay = random_.pick(rehideDelays),
            .hideOnClickOutside = random_.chance(50),
            .showOnHover = random_.chance(50),
            .showOnScroll = random_.chance(50),
            .alwaysHiddenEnabled = random_.chance(50),
            .clockEnabled = random_.chance(30),
            .refreshPanelOnOpen = random_.chance(50),
            .clickAction = random_.pick(allClickActions),
            .toggleIconStyle = random_.pick(allToggleIconStyles),
            .hotkey = random_.below(shortcuts.size() + 1),
            .panelHotkey = random_.below(shortcuts.size() + 1)};
}

Trigger StepGenerator::chooseTrigger(const RevealModel& model) {
    // Some things follow one another too rarely when left to chance.
    if (model.agenda().isWaiting(ModelAgenda::Wait::clickOutside) && random_.chance(30))
        return Trigger::openMenu;
    if (model.panel() && model.level() == RevealLevel::none && random_.chance(8))
        return Trigger::scheduleRehideTimer;
    if (model.panel() && random_.chance(10))
        return Trigger::activateEntry;
    if (hasJustScrolled(model) && random_.chance(60))
        return random_.pick(afterScroll);
    static const unsigned total =
        std::accumulate(triggers.begin(), triggers.end(), 0U,
                        [](unsigned sum, const TriggerInfo& info) { return sum + info.weight; });
    auto left = random_.below(total);
    for (const TriggerInfo& info : triggers) {
        if (left < info.weight)
            return info.trigger;
        left -= info.weight;
    }
    return Trigger::advance;
}

void StepGenerator::chooseParameters(Step& step, const RevealModel& model) {
    switch (step.trigger) {
        case Trigger::advance:
            step.nanoseconds = chooseTime(model);
            break;
        case Trigger::movePointer:
            choosePlace(step, model);
            break;
        case Trigger::handToggleEvent:
            step.eventType = random_.pick(toggleEvents);
            step.flags |= random_.chance(40) ? modifier::option : 0;
            break;
        case Trigger::scroll:
            chooseDeltas(step);
            break;
        case Trigger::openMenu:
            step.choice = random_.below(menuKinds.size());
            break;
        case Trigger::closeMenu:
            step.choice = random_.below(model.menuCount() + 1);
            break;
        case Trigger::setWindowServer:
            step.on = random_.chance(80);
            break;
        case Trigger::scheduleRehideTimer:
            step.x = std::abs(random_.pick(rehideDelays));
            break;
        case Trigger::setMenuBarHidden:
            step.on = random_.chance(40);
            break;
        case Trigger::setScreens:
            step.choice = random_.chance(5) ? screenArrangements.size() - 1
                                            : random_.below(screenArrangements.size() - 1);
            break;
        case Trigger::setThickness:
            step.x = random_.pick(thicknesses);
            break;
        case Trigger::setScreenCapture:
        case Trigger::setTrusted:
            step.on = random_.chance(70);
            break;
        case Trigger::setCaptureTime:
            step.choice = random_.below(captureTimeCount);
            step.x = random_.pick(captureTimes);
            break;
        case Trigger::activateEntry:
            step.choice = random_.below(panelEntries.size());
            break;
        case Trigger::setTimeOfDay:
            step.x = model.now() + random_.whole(-3, 5);
            break;
        default:
            break;
    }
}

void StepGenerator::choosePreference(Step& step) {
    switch (step.trigger) {
        case Trigger::setAutoRehide:
        case Trigger::setAlwaysHiddenEnabled:
        case Trigger::setRefreshPanelOnOpen:
            step.on = random_.chance(60);
            break;
        case Trigger::setClockEnabled:
            step.on = random_.chance(25);
            break;
        case Trigger::setHideOnClickOutside:
        case Trigger::setShowOnHover:
        case Trigger::setShowOnScroll:
            step.on = random_.chance(75);
            break;
        case Trigger::setRehideDelay:
            step.x = random_.pick(rehideDelays);
            break;
        case Trigger::setClickAction:
            step.choice = random_.chance(40) ? 1 : 0;
            break;
        case Trigger::setToggleIconStyle:
            step.choice = random_.below(allToggleIconStyles.size());
            break;
        default:
            break;
    }
}

void StepGenerator::chooseShortcut(Step& step, const RevealModel& model) {
    switch (step.trigger) {
        case Trigger::setHotkey:
        case Trigger::setPanelHotkey:
            step.choice = random_.below(shortcuts.size() + 1);
            break;
        case Trigger::setRefusal:
            step.choice = random_.below(shortcuts.size());
            step.on = random_.chance(40);
            step.x = random_.pick(refusalStatuses);
            break;
        case Trigger::pressShortcut:
            step.choice = random_.below(shortcuts.size());
            // Rather one that is set.
            if (const auto set = model.preferences().hotkey; set < shortcuts.size() && random_.chance(40))
                step.choice = set;
            break;
        case Trigger::reportPress:
            step.choice = random_.below(firstReportedId + 1);
            if (random_.chance(50))
                step.choice = firstReportedId + model.nextShortcutId() - random_.below(3);
            break;
        default:
            break;
    }
}

MenuPlan StepGenerator::chooseMenuPlan(const RevealModel& model) {
    MenuPlan plan;
    plan.nanoseconds = chooseTime(model);
    plan.choice = static_cast<MenuChoice>(random_.below(menuChoiceCount));
    if (random_.chance(15))
        plan.shortcut = random_.below(shortcuts.size());
    return plan;
}

void StepGenerator::choosePlace(Step& step, const RevealModel& model) {
    const ModelGeometry& geometry = model.geometry();
    const auto panel = model.panel();
    if (geometry.screens.empty() || random_.chance(5)) {
        step.x = random_.whole(-60000, 60000) + 0.5;
        step.y = random_.whole(-3000, 3000) + 0.5;
    } else if (panel && random_.chance(20)) {
        step.x = panel->x + random_.whole(-2, 102) + 0.5;
        step.y = panel->y + random_.whole(-2, 38) + 0.5;
    } else if (random_.chance(10)) {
        placeOnEdge(step, geometry);
    } else if (random_.chance(55)) {
        placeOnBarItem(step, geometry);
    } else {
        placeOnScreen(step, random_.pick(geometry.screens));
    }
}

void StepGenerator::placeOnBarItem(Step& step, const ModelGeometry& geometry) {
    const auto item = random_.chance(65) ? OwnItem::toggle : step.item;
    const ArrangedScreen& primary = geometry.screens.front();
    const auto span =
        geometry.spanOf(item).value_or(ModelGeometry::Span{primary.x, primary.x + primary.width});
    step.x = std::max(span.minX, primary.x) + 0.5;
    // Half a point inside the edges, or half a point off them.
    if (random_.chance(50))
        step.x = span.maxX - 0.5;
    if (random_.chance(15))
        step.x = span.maxX + 0.5;
    const auto height = static_cast<int>(geometry.thickness);
    step.y = primary.y + primary.height - 0.5 - random_.whole(0, height);
}

void StepGenerator::placeOnEdge(Step& step, const ModelGeometry& geometry) {
    const ArrangedScreen screen = random_.pick(geometry.screens);
    const double top = screen.y + screen.height;
    step.x = screen.x + (random_.chance(50) ? screen.width : 0);
    if (const auto span = geometry.spanOf(step.item); span && random_.chance(50))
        step.x = random_.chance(50) ? span->minX : span->maxX;
    const std::array<double, 6> edges{0, 1, 24, screen.menuBarHeight, geometry.thickness, screen.height};
    step.y = top - random_.pick(edges);
    if (random_.chance(30))
        step.x = screen.x + 100.5;
}

void StepGenerator::placeOnScreen(Step& step, const ArrangedScreen& screen) {
    const double depth = random_.chance(50) ? random_.pick(depths) : random_.whole(41, 700) + 0.5;
    step.x = screen.x + random_.whole(0, static_cast<int>(screen.width) - 1) + 0.5;
    step.y = screen.y + screen.height - depth;
}

void StepGenerator::chooseDeltas(Step& step) {
    constexpr std::array<double, 13> deltas{-20, -5, -4.000001, -4, -3, -0.5, 0, 1, 3, 4, 4.000001, 5, 20};
    step.x = random_.chance(50) ? 0 : random_.pick(deltas);
    step.y = random_.pick(deltas);
}

std::int64_t StepGenerator::chooseTime(const RevealModel& model) {
    const std::int64_t offset = static_cast<std::int64_t>(random_.below(3)) - 1;
    switch (random_.below(8)) {
        case 0:
            return 0;
        case 1:
            return std::max<std::int64_t>(random_.pick(knownTimes) + offset, 0);
        case 2:
        case 3:
            return std::max<std::int64_t>(timeToScroll(model) + offset, 0);
        case 4:
            return static_cast<std::int64_t>(random_.below(2 * second));
        default:
            return std::max<std::int64_t>(model.agenda().nanosecondsToNextWait().value_or(second) + offset,
                                          0);
    }
}

bool StepGenerator::hasJustScrolled(const RevealModel& model) {
    constexpr double recently = 0.7;
    const double passed = model.now() - model.lastScrollToggle();
    return passed >= 0 && passed < recently;
}

std::int64_t StepGenerator::timeToScroll(const RevealModel& model) {
    constexpr double debounce = 0.6;
    const double left = model.lastScrollToggle() + debounce - model.now();
    return left > 0 && left < 1 ? std::llround(left * 1e9) : second / 10;
}

ModifierFlags StepGenerator::chooseFlags() {
    if (random_.chance(50))
        return 0;
    if (random_.chance(50))
        return random_.pick(modifierFlags);
    ModifierFlags flags = 0;
    for (const ModifierFlags flag : modifierFlags)
        flags |= random_.chance(40) ? flag : 0;
    return flags;
}

}  // namespace velmo
