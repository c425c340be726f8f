#include "model/reveal_model.h"

#include <utility>

namespace velmo {

namespace {

constexpr double activationDelay = 0.25;
constexpr double clickEventDistance = 0.04;

}  // namespace

bool RevealModel::activateEntry(std::size_t choice) {
    if (!panel_ || entries_.empty())
        return false;
    if (choice == settingsEntry) {
        account_.settingsRequested(std::nullopt, accessRequests_);
        return true;
    }
    const std::string name = std::string(panelEntries[choice]) + ' ';
    if (entries_.find(name) == std::string::npos)
        return false;
    activations_[++lastProcess_] = {name, {}};
    agenda_.post(Task::entryActivated, 0, lastProcess_);
    return true;
}

void RevealModel::entryActivated(ProcessId process) {
    closePanel();
    const bool isAlwaysHidden = knownAlwaysHidden_.find(activations_.at(process).name) != std::string::npos;
    take(isAlwaysHidden ? Cause::activationOfAlwaysHidden : Cause::activationOfHidden);
    agenda_.cancel(rehide_);
    agenda_.wait(Wait::activation, activationDelay, process);
}

void RevealModel::activationDue(ProcessId process) {
    Activation& activation = activations_.at(process);
    const auto middle = middleOf(activation.name);
    if (middle && isTrusted_) {
        activation.place = *middle;
        post(EventType::mouseMoved, activation.place);
        agenda_.wait(Wait::press, clickEventDistance, process);
        return;
    }
    activations_.erase(process);
    if (middle) {
        ++prompts_;
        account_.settingsRequested(SettingsTab::panel, accessRequests_);
    }
    take(Cause::activationOver);
}

std::optional<Point> RevealModel::middleOf(const std::string& name) const {
    if (geometry_.screens.empty() || !windowServerAnswers_)
        return std::nullopt;
    const auto span =
        name.starts_with(panelEntries.front()) ? geometry_.hiddenItem() : geometry_.alwaysHiddenItem();
    if (!geometry_.isOnPrimaryScreen(span))
        return std::nullopt;
    return Point{(span.minX + span.maxX) / 2, geometry_.thickness / 2};
}

void RevealModel::pressDue(ProcessId process) {
    post(EventType::leftMouseDown, activations_.at(process).place);
    agenda_.wait(Wait::release, clickEventDistance, process);
}

void RevealModel::releaseDue(ProcessId process) {
    post(EventType::leftMouseUp, activations_.extract(process).mapped().place);
    take(Cause::activationOver);
}

void RevealModel::post(EventType type, const Point& place) {
    clicks_ += describeClick(type, place);
}

}  // namespace velmo
