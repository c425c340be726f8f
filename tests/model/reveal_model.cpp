#include "model/reveal_model.h"

#include "model/menu_kind.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

namespace velmo {

namespace {

struct ImageNames {
    std::string_view hidden;
    std::string_view revealed;
};

/// In the order of the styles.
constexpr std::array<ImageNames, 6> toggleImages{{
    {"chevron.left", "chevron.right"},
    {"ellipsis.circle", "ellipsis.circle.fill"},
    {"circle", "circle.fill"},
    {"line.3.horizontal", "line.3.horizontal.decrease"},
    {"eye.slash", "eye"},
    {"fridge with dots", "fridge"},
}};

constexpr double shortestRehideDelay = 1.0;
constexpr double rehideRetry = 1.0;
constexpr double clickOutsideDelay = 0.25;
constexpr double scrollThreshold = 4.0;
constexpr double scrollDebounce = 0.6;
constexpr double placementTime = 45.0;
constexpr double collapsedLength = 12;
/// Left of an item, of the toggle without its image, and of the other divider.
constexpr double placeOfTheDividerAtStart = 1440 - 24 - 8 - 12 - 12;

}  // namespace

RevealModel::RevealModel(const ModelPreferences& stored) : preferences_(stored) {
    geometry_.alwaysHiddenDividerVisible = stored.alwaysHiddenEnabled;
    if (!stored.alwaysHiddenEnabled)
        geometry_.alwaysHiddenDividerLeftBehind = placeOfTheDividerAtStart;
    if (stored.showOnHover)
        hovering_ = false;
    account_.handlerInstalled();
    if (stored.clockEnabled)
        startClock();
    apply();
    registerShortcuts();
}

Observation RevealModel::observe() {
    const bool hiddenCollapsed = geometry_.hiddenDividerLength == collapsedLength;
    const bool alwaysHiddenCollapsed = geometry_.alwaysHiddenDividerLength == collapsedLength;
    return {.level = level_,
            .toggleLength = -1,
            .hiddenDividerLength = geometry_.hiddenDividerLength,
            .alwaysHiddenDividerLength = geometry_.alwaysHiddenDividerLength,
            .hiddenDividerEnabled = hiddenCollapsed,
            .alwaysHiddenDividerEnabled = alwaysHiddenCollapsed,
            .alwaysHiddenDividerVisible = geometry_.alwaysHiddenDividerVisible,
            .toggleImage = toggleImage_,
            .hiddenDividerImage = hiddenCollapsed ? "Velmo divider" : "",
            .alwaysHiddenDividerImage = alwaysHiddenCollapsed ? "Velmo always-hidden divider" : "",
            .clock = !clockTick_     ? "off"
                     : calendarTick_ ? "on, with its calendar"
                                     : "on",
            .hoverTracked = hovering_.has_value(),
            .pointerInMenuBar = geometry_.isPointerInMenuBar(),
            .panel = panel_,
            .snapshot = std::accumulate(pictured_.begin(), pictured_.end(),
                                        knownHidden_ + "| " + knownAlwaysHidden_ + "| "),
            .posted = agenda_.postedCount(),
            .timers = agenda_.waitCount(),
            .nanosecondsToNextTimer = agenda_.nanosecondsToNextWait(),
            .clicks = std::exchange(clicks_, {}),
            .prompts = prompts_,
            .heldKeys = describeHeldKeys(),
            .account = account_.take()};
}

Date RevealModel::now() const {
    return dateAtStart_ + agenda_.seconds();
}

void RevealModel::setTimeOfDay(Date date) {
    dateAtStart_ = date - agenda_.seconds();
}

void RevealModel::take(Cause cause) {
    const std::size_t place = rowOf(cause, level_);
    const Row& row = revealTable()[place];
    ++taken_[place];
    level_ = row.to;
    switch (row.effect) {
        case Effect::nothing:
            break;
        case Effect::applies:
            apply();
            break;
        case Effect::restartsTimer:
            restartTimer();
            break;
        case Effect::stopsTimer:
            agenda_.cancel(rehide_);
            break;
        case Effect::retries:
            scheduleRehide(rehideRetry);
            break;
    }
}

void RevealModel::apply() {
    const Appearance& appearance = appearanceOf(level_);
    geometry_.hiddenDividerLength = appearance.hiddenDividerLength;
    geometry_.alwaysHiddenDividerLength = appearance.alwaysHiddenDividerLength;
    const ImageNames& names = toggleImages[static_cast<std::size_t>(preferences_.toggleIconStyle)];
    toggleImage_ = appearance.toggleRevealed ? names.revealed : names.hidden;
    restartTimer();
    if (level_ != RevealLevel::none)
        scheduleSnapshot();
}

void RevealModel::restartTimer() {
    agenda_.cancel(rehide_);
    rehide_.reset();
    if (level_ != RevealLevel::none && preferences_.autoRehide)
        scheduleRehide(std::max(preferences_.rehideDelay, shortestRehideDelay));
}

void RevealModel::scheduleRehide(double seconds) {
    rehide_ = agenda_.wait(Wait::rehide, seconds);
}

void RevealModel::runPosted() {
    while (const auto posted = agenda_.takePosted())
        run(*posted);
}

void RevealModel::run(const ModelAgenda::Posted& posted) {
    switch (posted.task) {
        case Task::rehideFired:
            rehideFired();
            break;
        case Task::clickedOutside:
            clickedOutside();
            break;
        case Task::scrolled:
            scrolled(posted.value);
            break;
        case Task::showOnHoverChanged:
            showOnHoverChanged(posted.value != 0);
            break;
        case Task::delayChanged:
            take(Cause::delayChange);
            break;
        case Task::styleChanged:
            take(Cause::styleChange);
            break;
        case Task::alwaysHiddenChanged:
            alwaysHiddenChanged(posted.value != 0);
            break;
        case Task::clockEnabledChanged:
            clockEnabledChanged(posted.value != 0);
            break;
        case Task::clockTicked:
            break;
        case Task::shortcutsChanged:
            take(Cause::shortcutsChange);
            registerShortcuts();
            break;
        case Task::toggleShortcutPressed:
            take(Cause::shortcutToggleHidden);
            break;
        case Task::panelShortcutPressed:
            togglePanel();
            break;
        case Task::snapshotBegins:
            snapshotBegins(posted.process);
            break;
        case Task::sleeperWakes:
            break;
        case Task::panelOpens:
            openPanel();
            break;
        case Task::panelCloses:
            closePanel();
            break;
        case Task::entryActivated:
            entryActivated(posted.process);
            break;
    }
}

void RevealModel::over(const ModelAgenda::Over& over) {
    switch (over.kind) {
        case Wait::rehide:
            agenda_.post(Task::rehideFired);
            break;
        case Wait::clickOutside:
            clickOutsideOver();
            break;
        case Wait::hover:
            hoverOver();
            break;
        case Wait::clockTick:
            clockTick_ = agenda_.wait(Wait::clockTick, tickInterval);
            agenda_.post(Task::clockTicked);
            break;
        case Wait::calendarTick:
            calendarTick_ = agenda_.wait(Wait::calendarTick, tickInterval);
            break;
        case Wait::snapshot:
            snapshotDue();
            break;
        case Wait::panelRefresh:
            panelRefreshOver(over.process);
            break;
        case Wait::query:
            queryOver(over.process);
            break;
        case Wait::picture:
            pictureOver(over.process);
            break;
        case Wait::activation:
            activationDue(over.process);
            break;
        case Wait::press:
            pressDue(over.process);
            break;
        case Wait::release:
            releaseDue(over.process);
            break;
    }
}

void RevealModel::rehideFired() {
    if (geometry_.isPointerInMenuBar())
        take(Cause::rehidePutOffByPointer);
    else if (panel_ && !isOwnMenuOpen_)
        take(Cause::rehidePutOffByPanel);
    else
        take(isMenuOpen() || isOwnMenuOpen_ ? Cause::rehidePutOffByMenu : Cause::rehide);
}

void RevealModel::clickedOutside() {
    if (level_ != RevealLevel::none && preferences_.hideOnClickOutside && !geometry_.isPointerInMenuBar() &&
        !panel_ && !isMenuOpen())
        agenda_.wait(Wait::clickOutside, clickOutsideDelay);
}

void RevealModel::clickOutsideOver() {
    const bool putOff = level_ != RevealLevel::none && (isMenuOpen() || isOwnMenuOpen_);
    take(putOff ? Cause::clickOutsidePutOff : Cause::clickOutside);
}

void RevealModel::scrolled(double delta) {
    if (!preferences_.showOnScroll || !geometry_.isPointerInMenuBar())
        return;
    if (!(std::abs(delta) > scrollThreshold)) {
        take(Cause::scrollTooWeak);
    } else if (!(now() - lastScrollToggle_ > scrollDebounce)) {
        take(Cause::scrollTooSoon);
    } else {
        lastScrollToggle_ = now();
        take(Cause::scroll);
    }
}

void RevealModel::hoverOver() {
    if (preferences_.clickAction == ClickAction::revealInMenuBar) {
        take(Cause::hover);
    } else {
        take(Cause::panelHover);
        if (!panel_)
            togglePanel();
    }
}

void RevealModel::showOnHoverChanged(bool on) {
    hovering_.reset();
    if (on)
        hovering_ = geometry_.itemUnderPointer() == OwnItem::toggle;
}

void RevealModel::alwaysHiddenChanged(bool on) {
    geometry_.setAlwaysHiddenDividerVisible(on);
    take(on ? Cause::alwaysHiddenOn : Cause::alwaysHiddenOff);
}

void RevealModel::placeClock() {
    take(preferences_.alwaysHiddenEnabled ? Cause::placementWithAlwaysHidden
                                          : Cause::placementWithoutAlwaysHidden);
    agenda_.cancel(rehide_);
    scheduleRehide(placementTime);
}

bool RevealModel::isMenuOpen() const {
    return windowServerAnswers_ && std::any_of(menus_.begin(), menus_.end(), [](std::size_t kind) {
               return menuKinds[kind].isOtherAppMenu;
           });
}

}  // namespace velmo
