#include "model/live_menu_bar.h"

#include "model/menu_kind.h"
#include "model/panel_entry.h"
#include "model/screen_arrangement.h"
#include "views/view_search.h"

namespace velmo {

namespace {

MouseButton buttonOf(const Step& step) {
    return step.rightButton ? MouseButton::right : MouseButton::left;
}

std::vector<std::string_view> titlesOf(MenuChoice choice) {
    switch (choice) {
        case MenuChoice::nothing:
            break;
        case MenuChoice::toggleHidden:
            return {"Show Hidden Items", "Hide Items"};
        case MenuChoice::toggleAlwaysHidden:
            return {"Show Always-Hidden Items", "Hide Always-Hidden Items"};
        case MenuChoice::openPanel:
            return {"Open Hidden Items Panel"};
        case MenuChoice::openSettings:
            return {"Settings…", "Clock Settings…"};
        case MenuChoice::quit:
            return {"Quit Velmo"};
        case MenuChoice::hideClock:
            return {"Hide velmo Clock"};
    }
    return {};
}

}  // namespace

bool LiveMenuBar::perform(const Step& step) {
    menuPlan_ = step.menu;
    if (step.trigger == Trigger::advance)
        pass(step.nanoseconds);
    performSurroundings(step);
    performPreference(step);
    performCommand(step);
    performShortcut(step);
    return performMouse(step);
}

bool LiveMenuBar::performMouse(const Step& step) {
    switch (step.trigger) {
        case Trigger::movePointer:
            desktop_.movePointer({step.x, step.y});
            return true;
        case Trigger::clickItem:
            return desktop_.click(nameOf(step.item), buttonOf(step), step.flags);
        case Trigger::pressItem:
            return desktop_.press(nameOf(step.item), buttonOf(step), step.flags);
        case Trigger::releaseItem:
            return desktop_.release(nameOf(step.item), buttonOf(step), step.flags);
        case Trigger::otherButtonOnItem:
            return useOtherButton(step.item);
        case Trigger::clickAtPointer:
            desktop_.clickAtPointer(buttonOf(step), step.flags);
            return true;
        case Trigger::pressAtPointer:
            desktop_.pressAtPointer(buttonOf(step), step.flags);
            return true;
        case Trigger::releaseAtPointer:
            desktop_.releaseAtPointer(buttonOf(step), step.flags);
            return true;
        case Trigger::otherButtonElsewhere:
            useOtherButtonElsewhere();
            return true;
        case Trigger::activateEntry:
            return activateEntry(step.choice);
        case Trigger::pressEscape:
            // It reaches others unless the panel takes it.
            return desktop_.pressKey(escapeKeyCode);
        case Trigger::scroll:
            desktop_.scrollAtPointer(step.x, step.y);
            return true;
        default:
            return true;
    }
}

void LiveMenuBar::performSurroundings(const Step& step) {
    switch (step.trigger) {
        case Trigger::runPosted:
            desktop_.runLoop().runPosted();
            break;
        case Trigger::openMenu:
            openMenu(step.choice);
            break;
        case Trigger::closeMenu:
            closeMenu(step.choice);
            break;
        case Trigger::setWindowServer:
            desktop_.windowServer().setAvailable(step.on);
            break;
        case Trigger::setMenuBarHidden:
            desktop_.screens().setMenuBarHidden(step.on);
            break;
        case Trigger::setScreens:
            setScreens(step.choice);
            break;
        case Trigger::setThickness:
            desktop_.statusBar().setThickness(step.x);
            break;
        case Trigger::fireTimer:
            desktop_.runLoop().fireNextTimer();
            break;
        case Trigger::setScreenCapture:
            desktop_.screenCapture().setGranted(step.on);
            break;
        case Trigger::setTrusted:
            desktop_.accessibility().setTrusted(step.on);
            break;
        case Trigger::setCaptureTime:
            setCaptureTime(step.choice, step.x);
            break;
        case Trigger::setTimeOfDay:
            desktop_.runLoop().setNow(step.x);
            break;
        default:
            break;
    }
}

void LiveMenuBar::performPreference(const Step& step) {
    switch (step.trigger) {
        case Trigger::setAutoRehide:
            preferences_->autoRehide.set(step.on);
            break;
        case Trigger::setRehideDelay:
            preferences_->rehideDelay.set(step.x);
            break;
        case Trigger::setHideOnClickOutside:
            preferences_->hideOnClickOutside.set(step.on);
            break;
        case Trigger::setShowOnHover:
            preferences_->showOnHover.set(step.on);
            break;
        case Trigger::setShowOnScroll:
            preferences_->showOnScroll.set(step.on);
            break;
        case Trigger::setAlwaysHiddenEnabled:
            preferences_->alwaysHiddenEnabled.set(step.on);
            break;
        case Trigger::setClockEnabled:
            preferences_->clockEnabled.set(step.on);
            break;
        case Trigger::setRefreshPanelOnOpen:
            preferences_->refreshPanelOnOpen.set(step.on);
            break;
        case Trigger::setClickAction:
            preferences_->clickAction.set(allClickActions[step.choice]);
            break;
        case Trigger::setToggleIconStyle:
            preferences_->toggleIconStyle.set(allToggleIconStyles[step.choice]);
            break;
        case Trigger::setHotkey:
            preferences_->hotkey.set(bindingOf(step.choice));
            break;
        case Trigger::setPanelHotkey:
            preferences_->panelHotkey.set(bindingOf(step.choice));
            break;
        default:
            break;
    }
}

void LiveMenuBar::performCommand(const Step& step) {
    switch (step.trigger) {
        case Trigger::handToggleEvent:
            manager_->handleToggleClick({step.eventType, step.flags});
            break;
        case Trigger::revealForClockPlacement:
            manager_->revealForClockPlacement();
            break;
        case Trigger::applyRevealLevel:
            manager_->applyRevealLevel();
            break;
        case Trigger::restartRehideTimer:
            manager_->restartRehideTimer();
            break;
        case Trigger::scheduleRehideTimer:
            manager_->scheduleRehideTimer(step.x);
            break;
        default:
            break;
    }
}

void LiveMenuBar::performShortcut(const Step& step) {
    switch (step.trigger) {
        case Trigger::setRefusal:
            setRefusal(shortcuts[step.choice], step.on, static_cast<HotKeyStatus>(step.x));
            break;
        case Trigger::pressShortcut:
            pressShortcut(step.choice);
            break;
        case Trigger::reportPress:
            reportPress(step.choice);
            break;
        default:
            break;
    }
}

void LiveMenuBar::setRefusal(const Shortcut& shortcut, bool refuse, HotKeyStatus status) {
    if (refuse)
        desktop_.hotKeys().refuse(shortcut.keyCode, shortcut.hotKeyModifiers, status);
    else
        desktop_.hotKeys().accept(shortcut.keyCode, shortcut.hotKeyModifiers);
}

void LiveMenuBar::pressShortcut(std::size_t choice) {
    const Shortcut& shortcut = shortcuts[choice];
    for (const auto status : desktop_.hotKeys().press(shortcut.keyCode, shortcut.hotKeyModifiers))
        account_.pressAnswered(status);
}

void LiveMenuBar::reportPress(std::size_t choice) {
    HotKeyEvent event;
    if (const auto id = reportedId(choice))
        event.directObject = HotKeyID{0, *id};
    for (const auto status : desktop_.hotKeys().deliver(choice > 0 ? &event : nullptr))
        account_.pressAnswered(status);
}

void LiveMenuBar::useOwnMenu(SimulatedOpenMenu& menu) {
    std::vector<Account::Entry> entries;
    for (const auto& item : menu.menu().items)
        entries.push_back(item ? Account::Entry{item->title(), item->keyEquivalent()} : Account::Entry{});
    account_.menuOpened(menu.itemName(), menu.location(), entries);
    if (menuPlan_.shortcut)
        pressShortcut(*menuPlan_.shortcut);
    pass(menuPlan_.nanoseconds);
    for (const std::string_view title : titlesOf(menuPlan_.choice)) {
        if (menu.choose(title))
            return;
    }
}

void LiveMenuBar::pass(std::int64_t nanoseconds) {
    constexpr double perSecond = 1e9;
    desktop_.advance(static_cast<double>(nanoseconds) / perSecond);
}

bool LiveMenuBar::useOtherButton(OwnItem item) {
    const auto* slot = desktop_.statusBar().slot(nameOf(item));
    if (slot == nullptr || !desktop_.statusBar().isOnScreen(*slot))
        return false;
    slot->own->button()->press({EventType::otherMouseDown}, desktop_.application());
    slot->own->button()->release({EventType::otherMouseUp}, true, desktop_.application());
    return true;
}

void LiveMenuBar::useOtherButtonElsewhere() {
    desktop_.events().deliver({EventType::otherMouseDown});
    desktop_.events().deliver({EventType::otherMouseUp});
}

void LiveMenuBar::openMenu(std::size_t kind) {
    const MenuKind& menu = menuKinds[kind];
    WindowListEntry window;
    window.layer = menu.layer;
    window.ownerPID = menu.ownerPID;
    if (menu.height)
        window.bounds = Rect{300, 26, 200, *menu.height};
    menus_.push_back(desktop_.windowServer().addWindow(window));
}

void LiveMenuBar::closeMenu(std::size_t choice) {
    if (choice < menus_.size()) {
        desktop_.windowServer().removeWindow(menus_[choice]);
        menus_.erase(menus_.begin() + static_cast<std::ptrdiff_t>(choice));
        return;
    }
    desktop_.windowServer().removeAllWindows();
    menus_.clear();
}

bool LiveMenuBar::activateEntry(std::size_t choice) {
    const auto* panel = desktop_.windows().visiblePanel();
    const View* entry = panel == nullptr ? nullptr : find<Button>(panel->content(), panelEntries[choice]);
    if (entry == nullptr)
        return false;
    // A copy: the panel may get another content meanwhile.
    const auto action = std::get<Button>(entry->content).action;
    action();
    return true;
}

std::uint32_t LiveMenuBar::windowOf(std::string_view item) {
    return static_cast<std::uint32_t>(desktop_.statusBar().slot(item)->windowNumber);
}

void LiveMenuBar::setCaptureTime(std::size_t choice, Seconds duration) {
    if (choice == 0)
        desktop_.screenCapture().setQueryDuration(duration);
    else
        desktop_.screenCapture().setDuration(windowOf(otherItems[choice - 1]), duration);
}

void LiveMenuBar::setScreens(std::size_t arrangement) {
    std::vector<Screen> screens;
    for (const ArrangedScreen& screen : screenArrangements[arrangement])
        screens.push_back(SimulatedScreens::withMenuBar({screen.x, screen.y, screen.width, screen.height},
                                                        screen.menuBarHeight));
    desktop_.screens().set(std::move(screens));
}

}  // namespace velmo
