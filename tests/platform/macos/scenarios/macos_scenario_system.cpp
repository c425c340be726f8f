#include "platform/macos/scenarios/macos_scenario_desktop.h"

#include "macos/foundation/ns_number.h"
#include "platform/macos/doubles/array_of.h"
#include "platform/macos/doubles/window_list.h"

#include <algorithm>

namespace velmo::macos {
namespace {

/// From the top left, left of all items of the program.
Rect frameOfIcon(std::size_t index) {
    return {900 + 60 * static_cast<double>(index), 0, 40, 22};
}

}  // namespace

void MacosScenarioDesktop::setMayCapture(bool may) {
    countFromNow();
    doubles::system().mayCapture = may;
}

int MacosScenarioDesktop::captureQuestions() {
    return doubles::system().captureRequests;
}

void MacosScenarioDesktop::setTrusted(bool isTrusted) {
    countFromNow();
    doubles::system().isTrusted = isTrusted;
}

int MacosScenarioDesktop::trustQuestions() {
    const auto& asked = doubles::system().trustPrompts;
    return static_cast<int>(std::count(asked.begin(), asked.end(), true));
}

bool MacosScenarioDesktop::startsAtLogin() {
    return doubles::system().loginStatus == 1;
}

void MacosScenarioDesktop::setLoginError(const std::string& error) {
    countFromNow();
    doubles::system().loginError = error;
}

std::optional<double> MacosScenarioDesktop::iconSpacing() {
    const auto& stored = doubles::system().preferences;
    const auto found =
        stored.find({"any application", "current user", "current host", "NSStatusItemSpacing"});
    return found == stored.end() ? std::nullopt : std::optional(as<NSNumber>(found->second).doubleValue());
}

int MacosScenarioDesktop::logOuts() {
    const auto& scripts = doubles::system().scripts;
    return static_cast<int>(std::count(scripts.begin(), scripts.end(), "executed"));
}

void MacosScenarioDesktop::setHiddenIcons(const std::vector<std::string>& names) {
    countFromNow();
    hiddenIcons_ = names;
    std::vector<Object> windows;
    std::vector<Object> shareable;
    for (std::size_t i = 0; i < names.size(); ++i) {
        const auto number = static_cast<std::uint32_t>(500 + i);
        windows.push_back(doubles::itemWindow(number, names[i], frameOfIcon(i)));
        shareable.push_back(doubles::shareableWindow(number));
    }
    doubles::system().windowList = doubles::arrayOf(windows);
    doubles::system().shareableWindows = {doubles::arrayOf(shareable)};
}

std::string MacosScenarioDesktop::clickedIcon() {
    const auto& posted = doubles::system().postedEvents;
    if (posted.empty() || posted.back().type != static_cast<std::uint32_t>(EventType::leftMouseUp))
        return "";
    for (std::size_t i = 0; i < hiddenIcons_.size(); ++i) {
        if (frameOfIcon(i).contains(posted.back().location))
            return hiddenIcons_[i];
    }
    return "";
}

}  // namespace velmo::macos
