// What happens in a user's life, how often, and which of it comes next.

#include "soak_session.h"

#include <algorithm>

namespace velmo::desktop {

const std::vector<SoakSession::Action>& SoakSession::actions() {
    static const std::vector<Action> all = {
        {"a program comes into the tray", 16, &SoakSession::trayProgramComes},
        {"a program comes onto the bus", 12, &SoakSession::busProgramComes},
        {"a toolkit's program comes", 4, &SoakSession::toolkitProgramComes},
        {"a program dies", 14, &SoakSession::programGoes},
        {"a program takes its icon away", 8, &SoakSession::iconGoes},
        {"an icon changes", 12, &SoakSession::iconChanges},
        {"a program hangs", 2, &SoakSession::programHangs},
        {"an icon is clicked", 8, &SoakSession::clickIcon},
        {"an icon's menu is opened", 3, &SoakSession::openIconsMenu},
        {"the toggle is clicked", 16, &SoakSession::clickToggle},
        {"the toggle is clicked with Option", 6, &SoakSession::optionClickToggle},
        {"the toggle's menu is opened", 3, &SoakSession::openMenuAndLeaveIt},
        {"the panel is opened", 3, &SoakSession::openPanelAndLeaveIt},
        {"a picture in the panel is clicked", 3, &SoakSession::clickPicture},
        {"the calendar is opened", 2, &SoakSession::openCalendarAndLeaveIt},
        {"the pointer rests on the toggle", 1, &SoakSession::lookAtToolTip},
        {"an icon is dragged", 10, &SoakSession::dragIcon},
        {"an icon is dragged far to the left", 5, &SoakSession::hideIcon},
        {"something of ours is dragged", 6, &SoakSession::dragOurs},
        {"a drag is given up", 2, &SoakSession::giveUpDrag},
        {"a second monitor comes", 3, &SoakSession::addSecondMonitor},
        {"the second monitor goes", 3, &SoakSession::removeMonitors},
        {"half of the screen is left", 2, &SoakSession::leaveHalfTheScreen},
        {"the resolution changes", 2, &SoakSession::changeResolution},
        {"the scale changes", 4, &SoakSession::changeScale},
        {"the zone changes", 3, &SoakSession::changeZone},
        {"the bus starts anew", 2, &SoakSession::restartBus},
        {"another window manager comes", 2, &SoakSession::replaceManager},
        {"the window manager crashes", 1, &SoakSession::crashManager},
        {"a window fills the screen", 2, &SoakSession::fillScreen},
        {"the settings are looked at", 2, &SoakSession::lookAtSettings},
        {"the always-hidden section is switched", 3, &SoakSession::switchAlwaysHidden},
        {"the toggle has another icon", 2, &SoakSession::changeToggleIcon},
        {"the clock is switched", 2, &SoakSession::switchClock},
        {"items hide again by themselves", 1, &SoakSession::letItemsHideAgain},
        {"items show under the pointer", 1, &SoakSession::showByHovering},
        {"the toggle does something else", 2, &SoakSession::changeClickAction},
        {"the clock has another pattern", 2, &SoakSession::changePattern},
        {"the spacing changes", 2, &SoakSession::changeSpacing},
        {"a shortcut is recorded or removed", 2, &SoakSession::recordShortcut},
        {"the shortcut is pressed", 4, &SoakSession::pressShortcut},
        {"the panel's shortcut is recorded or removed", 2, &SoakSession::recordPanelShortcut},
        {"the panel's shortcut is pressed", 3, &SoakSession::pressPanelShortcut},
        {"items hide later or sooner", 1, &SoakSession::changeDelay},
        {"items hide at a click outside", 1, &SoakSession::hideByClickOutside},
        {"the user clicks outside", 2, &SoakSession::clickOutside},
        {"scrolling is switched", 2, &SoakSession::switchScrolling},
        {"the user scrolls on the bar", 4, &SoakSession::scroll},
        {"the panel shows old pictures or takes new ones", 2, &SoakSession::switchRefreshing},
    };
    return all;
}

/// Each as often as its weight says before any comes more often, so that none is missed in a few minutes.
void SoakSession::shuffle() {
    for (const auto& action : actions()) {
        counts_.try_emplace(action.name, 0);
        deck_.insert(deck_.end(), static_cast<std::size_t>(action.weight), &action);
    }
    std::shuffle(deck_.begin(), deck_.end(), random_);
}

void SoakSession::note(const std::string& action) {
    lastAction_ = action;
    ++counts_[action];
}

void SoakSession::step() {
    for (bool isDone = false; !isDone && !HasFailure();) {
        if (deck_.empty())
            shuffle();
        const auto* action = deck_.back();
        deck_.pop_back();
        lastAction_ = action->name;
        isDone = (this->*action->run)();
        if (isDone)
            ++counts_[lastAction_];
    }
    expectAll();
}

/// Directly right of the divider, unless it has had a place before.
void SoakSession::placeNew(const std::string& name) {
    ++icons_;
    if (std::find(order_.begin(), order_.end(), name) == order_.end())
        order_.insert(std::find(order_.begin(), order_.end(), "Velmo.Divider"), name);
}

std::string SoakSession::oneOf(const std::vector<std::string>& names) {
    return names.empty() ? std::string()
                         : names[static_cast<std::size_t>(below(static_cast<int>(names.size())))];
}

std::string SoakSession::anyOf(std::vector<std::string> names) {
    std::erase_if(names, [&](const auto& name) { return clients_.contains(name); });
    return oneOf(names);
}

std::string SoakSession::anyProgram() {
    if (clients_.empty())
        return {};
    return std::next(clients_.begin(), below(static_cast<int>(clients_.size())))->first;
}

std::string SoakSession::anyOnScreen(const std::function<bool(const Client&)>& condition) {
    std::vector<std::string> found;
    for (const auto& [name, client] : clients_) {
        if (isExpectedOnScreen(name) && condition(client))
            found.push_back(name);
    }
    return oneOf(found);
}

}  // namespace velmo::desktop
