#include "model/reveal_model.h"

namespace velmo {

namespace {

/// With its text, and without.
constexpr double fullWidth = 43;
constexpr double blankWidth = 8;

}  // namespace

// The clock hears of each writing, also of the same value.
void RevealModel::setClockEnabled(bool on) {
    preferences_.clockEnabled = on;
    agenda_.post(Task::clockEnabledChanged, on ? 1 : 0);
}

void RevealModel::clockEnabledChanged(bool on) {
    if (!on) {
        stopClock();
    } else if (!clockTick_) {
        startClock();
        placeClock();
    }
}

void RevealModel::startClock() {
    geometry_.clockWidth = wasClockShown_ ? blankWidth : fullWidth;
    wasClockShown_ = true;
    clockTick_ = agenda_.wait(Wait::clockTick, tickInterval);
}

void RevealModel::stopClock() {
    geometry_.clockWidth.reset();
    for (auto* tick : {&clockTick_, &calendarTick_}) {
        agenda_.cancel(*tick);
        tick->reset();
    }
    // The item that comes next is another one.
    for (auto& pressed : pressed_) {
        if (pressed == OwnItem::clock)
            pressed.reset();
    }
}

void RevealModel::clockClicked(bool rightButton) {
    if (rightButton) {
        showClockMenu();
    } else if (calendarTick_) {
        agenda_.cancel(calendarTick_);
        calendarTick_.reset();
    } else {
        calendarTick_ = agenda_.wait(Wait::calendarTick, tickInterval);
    }
}

// Unlike the other items' menu, it keeps nothing from hiding.
void RevealModel::showClockMenu() {
    account_.menuOpened(
        nameOf(OwnItem::clock), {0, geometry_.thickness + menuDistance},
        {{"Clock Settings…", ""}, {"System Clock Options…", ""}, {"", ""}, {"Hide velmo Clock", ""}});
    if (menuPlan_.shortcut)
        pressShortcut(*menuPlan_.shortcut);
    pass(menuPlan_.nanoseconds);
    if (menuPlan_.choice == MenuChoice::openSettings)
        account_.settingsRequested(SettingsTab::clock, accessRequests_);
    if (menuPlan_.choice == MenuChoice::hideClock)
        setClockEnabled(false);
}

}  // namespace velmo
