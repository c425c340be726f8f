#include "model/reveal_model.h"

#include <algorithm>

namespace velmo {

namespace {

constexpr std::string_view separator;

}  // namespace

void RevealModel::showOwnMenu(OwnItem item, Cause opened) {
    const bool offersAlwaysHidden = preferences_.alwaysHiddenEnabled;
    std::vector<Account::Entry> entries{
        {level_ == RevealLevel::none ? "Show Hidden Items" : "Hide Items", ""}};
    if (offersAlwaysHidden)
        entries.push_back(
            {level_ == RevealLevel::all ? "Hide Always-Hidden Items" : "Show Always-Hidden Items", ""});
    entries.insert(entries.end(), {{"Open Hidden Items Panel", ""},
                                   {separator, ""},
                                   {"Settings…", ","},
                                   {separator, ""},
                                   {"Quit Velmo", "q"}});
    account_.menuOpened(nameOf(item), {0, geometry_.thickness + menuDistance}, entries);
    take(opened);
    isOwnMenuOpen_ = true;
    if (menuPlan_.shortcut)
        pressShortcut(*menuPlan_.shortcut);
    pass(menuPlan_.nanoseconds);
    if (menuPlan_.choice != MenuChoice::toggleAlwaysHidden || offersAlwaysHidden)
        chooseFromOwnMenu(menuPlan_.choice);
    isOwnMenuOpen_ = false;
    take(Cause::menuClosed);
}

void RevealModel::chooseFromOwnMenu(MenuChoice choice) {
    switch (choice) {
        case MenuChoice::nothing:
            break;
        case MenuChoice::toggleHidden:
            take(Cause::menuToggleHidden);
            break;
        case MenuChoice::toggleAlwaysHidden:
            take(Cause::menuToggleAlwaysHidden);
            break;
        case MenuChoice::openPanel:
            togglePanel();
            break;
        case MenuChoice::openSettings:
            account_.settingsRequested(std::nullopt, accessRequests_);
            break;
        case MenuChoice::quit:
            account_.quit();
            break;
        case MenuChoice::hideClock:
            break;
    }
}

void RevealModel::togglePanel() {
    if (panel_) {
        take(Cause::panelClosed);
        closePanel();
    } else if (mayCaptureScreen_) {
        take(Cause::panelWithAccess);
        agenda_.post(Task::panelOpens);
    } else {
        take(Cause::panelWithoutAccess);
        account_.settingsRequested(SettingsTab::panel, ++accessRequests_);
    }
}

void RevealModel::registerShortcuts() {
    // One registration of each at most, the toggle's before the panel's.
    for (const HeldKey& key : heldKeys_)
        account_.hotKeyReleased(key.id);
    heldKeys_.clear();
    registerShortcut(preferences_.hotkey, Task::toggleShortcutPressed);
    registerShortcut(preferences_.panelHotkey, Task::panelShortcutPressed);
}

void RevealModel::registerShortcut(std::size_t choice, Task task) {
    if (choice == shortcuts.size())
        return;
    const Shortcut& shortcut = shortcuts[choice];
    const std::uint32_t id = nextShortcutId_++;
    account_.hotKeyRegistered(id);
    if (!isRefused(shortcut))
        heldKeys_.push_back({id, shortcut.keyCode, shortcut.hotKeyModifiers, task});
}

bool RevealModel::isRefused(const Shortcut& shortcut) const {
    return refused_.contains({shortcut.keyCode, shortcut.hotKeyModifiers});
}

void RevealModel::pressShortcut(std::size_t choice) {
    const Shortcut& shortcut = shortcuts[choice];
    for (const HeldKey& key : heldKeys_) {
        if (key.keyCode != shortcut.keyCode || key.modifiers != shortcut.hotKeyModifiers)
            continue;
        agenda_.post(key.task);
        account_.pressAnswered(0);
    }
}

void RevealModel::reportPress(std::optional<std::uint32_t> id) {
    account_.pressAnswered(0);
    for (const HeldKey& key : heldKeys_) {
        if (key.id == id)
            agenda_.post(key.task);
    }
}

std::string RevealModel::describeHeldKeys() const {
    std::string text;
    for (const HeldKey& key : heldKeys_)
        text += describeHeldKey("VLMO", key.id, key.keyCode, key.modifiers, 0);
    return text;
}

void RevealModel::setRefusal(const Shortcut& shortcut, bool refuse) {
    if (refuse)
        refused_.insert({shortcut.keyCode, shortcut.hotKeyModifiers});
    else
        refused_.erase({shortcut.keyCode, shortcut.hotKeyModifiers});
}

}  // namespace velmo
