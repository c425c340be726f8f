#include "model/reveal_model.h"

#include <limits>

namespace velmo {

bool RevealModel::perform(const Step& step) {
    menuPlan_ = step.menu;
    return performTime(step) && performMouse(step) && performSurroundings(step) && performPreference(step) &&
           performCommand(step);
}

bool RevealModel::performTime(const Step& step) {
    if (step.trigger == Trigger::runPosted)
        runPosted();
    if (step.trigger == Trigger::setTimeOfDay)
        setTimeOfDay(step.x);
    if (step.trigger == Trigger::fireTimer)
        fireTimer();
    if (step.trigger == Trigger::advance)
        pass(step.nanoseconds);
    return true;
}

void RevealModel::fireTimer() {
    if (const auto wait = agenda_.takeNextWait(std::numeric_limits<std::int64_t>::max()))
        over(*wait);
}

void RevealModel::pass(std::int64_t nanoseconds) {
    const std::int64_t end = agenda_.nanoseconds() + nanoseconds;
    runPosted();
    while (const auto wait = agenda_.takeNextWait(end)) {
        over(*wait);
        runPosted();
    }
    agenda_.goTo(end);
}

bool RevealModel::performMouse(const Step& step) {
    switch (step.trigger) {
        case Trigger::movePointer:
            movePointer(step.x, step.y);
            return true;
        case Trigger::clickItem:
            return pressItem(step.item, step.rightButton) &&
                   releaseItem(step.item, step.rightButton, step.flags);
        case Trigger::pressItem:
            return pressItem(step.item, step.rightButton);
        case Trigger::releaseItem:
            return releaseItem(step.item, step.rightButton, step.flags);
        case Trigger::clickAtPointer:
            pressAtPointer(step.rightButton);
            releaseAtPointer(step.rightButton, step.flags);
            return true;
        case Trigger::pressAtPointer:
            pressAtPointer(step.rightButton);
            return true;
        case Trigger::releaseAtPointer:
            releaseAtPointer(step.rightButton, step.flags);
            return true;
        case Trigger::otherButtonOnItem:
            return geometry_.isReachable(step.item);
        case Trigger::handToggleEvent:
            toggleClicked(step.eventType == EventType::rightMouseUp, step.flags, false);
            return true;
        case Trigger::activateEntry:
            return activateEntry(step.choice);
        case Trigger::pressEscape:
            if (!panel_)
                return true;
            closePanel();
            return false;
        case Trigger::scroll:
            if (!geometry_.itemUnderPointer())
                agenda_.post(Task::scrolled, step.x + step.y);
            return true;
        default:
            return true;
    }
}

bool RevealModel::performSurroundings(const Step& step) {
    switch (step.trigger) {
        case Trigger::openMenu:
            menus_.push_back(step.choice);
            break;
        case Trigger::closeMenu:
            closeMenu(step.choice);
            break;
        case Trigger::setWindowServer:
            windowServerAnswers_ = step.on;
            break;
        case Trigger::setMenuBarHidden:
            geometry_.menuBarHidden = step.on;
            break;
        case Trigger::setScreens:
            geometry_.setScreens(screenArrangements[step.choice]);
            break;
        case Trigger::setThickness:
            geometry_.thickness = step.x;
            break;
        case Trigger::setScreenCapture:
            mayCaptureScreen_ = step.on;
            break;
        case Trigger::setTrusted:
            isTrusted_ = step.on;
            break;
        case Trigger::setCaptureTime:
            captureTimes_[step.choice] = step.x;
            break;
        case Trigger::setRefusal:
            setRefusal(shortcuts[step.choice], step.on);
            break;
        case Trigger::pressShortcut:
            pressShortcut(step.choice);
            break;
        case Trigger::reportPress:
            reportPress(reportedId(step.choice));
            break;
        default:
            break;
    }
    return true;
}

void RevealModel::closeMenu(std::size_t choice) {
    if (choice < menus_.size())
        menus_.erase(menus_.begin() + static_cast<std::ptrdiff_t>(choice));
    else
        menus_.clear();
}

void RevealModel::movePointer(double x, double y) {
    geometry_.pointerX = x;
    geometry_.pointerY = y;
    const bool onToggle = geometry_.itemUnderPointer() == OwnItem::toggle;
    if (!hovering_ || hovering_ == onToggle)
        return;
    hovering_ = onToggle;
    agenda_.cancel(hover_);
    hover_.reset();
    constexpr double hoverDelay = 0.25;
    if (onToggle)
        hover_ = agenda_.wait(Wait::hover, hoverDelay);
}

bool RevealModel::performPreference(const Step& step) {
    const double on = step.on ? 1 : 0;
    switch (step.trigger) {
        case Trigger::setAutoRehide:
            change(preferences_.autoRehide, step.on, Task::delayChanged, on);
            break;
        case Trigger::setRehideDelay:
            change(preferences_.rehideDelay, step.x, Task::delayChanged, on);
            break;
        case Trigger::setHideOnClickOutside:
            preferences_.hideOnClickOutside = step.on;
            break;
        case Trigger::setShowOnHover:
            change(preferences_.showOnHover, step.on, Task::showOnHoverChanged, on);
            break;
        case Trigger::setShowOnScroll:
            preferences_.showOnScroll = step.on;
            break;
        case Trigger::setAlwaysHiddenEnabled:
            change(preferences_.alwaysHiddenEnabled, step.on, Task::alwaysHiddenChanged, on);
            break;
        case Trigger::setClockEnabled:
            setClockEnabled(step.on);
            break;
        case Trigger::setRefreshPanelOnOpen:
            preferences_.refreshPanelOnOpen = step.on;
            break;
        case Trigger::setClickAction:
            preferences_.clickAction = allClickActions[step.choice];
            break;
        case Trigger::setToggleIconStyle:
            change(preferences_.toggleIconStyle, allToggleIconStyles[step.choice], Task::styleChanged, on);
            break;
        case Trigger::setHotkey:
            change(preferences_.hotkey, step.choice, Task::shortcutsChanged, on);
            break;
        case Trigger::setPanelHotkey:
            change(preferences_.panelHotkey, step.choice, Task::shortcutsChanged, on);
            break;
        default:
            break;
    }
    return true;
}

bool RevealModel::performCommand(const Step& step) {
    switch (step.trigger) {
        case Trigger::revealForClockPlacement:
            placeClock();
            break;
        case Trigger::applyRevealLevel:
            take(Cause::applyAgain);
            break;
        case Trigger::restartRehideTimer:
            take(Cause::restartAgain);
            break;
        case Trigger::scheduleRehideTimer:
            scheduleRehide(step.x);
            break;
        default:
            break;
    }
    return true;
}

bool RevealModel::pressItem(OwnItem item, bool rightButton) {
    if (!geometry_.isReachable(item))
        return false;
    pressed_[rightButton ? 1 : 0] = item;
    pressedInWindow(rightButton);
    return true;
}

bool RevealModel::releaseItem(OwnItem item, bool rightButton, ModifierFlags flags) {
    if (!geometry_.isReachable(item))
        return false;
    releaseOn(item, rightButton, flags);
    return true;
}

void RevealModel::pressAtPointer(bool rightButton) {
    const auto item = geometry_.itemUnderPointer();
    pressed_[rightButton ? 1 : 0] = item;
    if (item) {
        pressedInWindow(rightButton);
    } else if (!isPointerInPanel()) {
        agenda_.post(Task::clickedOutside);
        if (panel_)
            agenda_.post(Task::panelCloses);
    }
}

void RevealModel::releaseAtPointer(bool rightButton, ModifierFlags flags) {
    releaseOn(geometry_.itemUnderPointer(), rightButton, flags);
}

void RevealModel::releaseOn(std::optional<OwnItem> item, bool rightButton, ModifierFlags flags) {
    auto& pressed = pressed_[rightButton ? 1 : 0];
    const bool sends = item && item == pressed && isEnabled(*item);
    pressed.reset();
    if (sends)
        clicked(*item, rightButton, flags);
}

bool RevealModel::isEnabled(OwnItem item) const {
    if (item == OwnItem::toggle || item == OwnItem::clock)
        return true;
    const Appearance& appearance = appearanceOf(level_);
    return (item == OwnItem::hiddenDivider ? appearance.hiddenDividerLength
                                           : appearance.alwaysHiddenDividerLength) < 10000;
}

void RevealModel::clicked(OwnItem item, bool rightButton, ModifierFlags flags) {
    if (item == OwnItem::toggle)
        toggleClicked(rightButton, flags, closedPanel_[rightButton ? 1 : 0]);
    else if (item == OwnItem::clock)
        clockClicked(rightButton);
    else if (rightButton)
        showOwnMenu(item, Cause::dividerRightClick);
    else
        take(Cause::dividerClick);
}

void RevealModel::toggleClicked(bool rightButton, ModifierFlags flags, bool hasClosedPanel) {
    constexpr ModifierFlags optionKey = 0x80000;
    if (rightButton) {
        showOwnMenu(OwnItem::toggle, Cause::toggleRightClick);
    } else if ((flags & optionKey) != 0) {
        take(Cause::toggleOptionClick);
    } else if (preferences_.clickAction == ClickAction::showPanel) {
        take(Cause::togglePanelClick);
        if (!hasClosedPanel)
            togglePanel();
    } else {
        take(Cause::toggleClick);
    }
}

}  // namespace velmo
