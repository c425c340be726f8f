#include "model/reveal_model.h"

#include <algorithm>

namespace velmo {

namespace {

constexpr double snapshotDelay = 0.4;
constexpr double refreshDelay = 0.35;
constexpr double oldestSnapshot = 2.0;
/// What every content wants.
constexpr Size panelSize{100, 36};
constexpr double panelDistance = 6;
constexpr double screenMargin = 8;

const std::string hiddenName = "H ";
const std::string alwaysHiddenName = "A ";
/// Of `captureTimes_`.
constexpr std::size_t queryTime = 0;
constexpr std::size_t hiddenItemTime = 1;
constexpr std::size_t alwaysHiddenItemTime = 2;

}  // namespace

void RevealModel::scheduleSnapshot() {
    if (!mayCaptureScreen_)
        return;
    if (snapshotWait_) {
        agenda_.cancel(snapshotWait_);
        snapshotWait_.reset();
        agenda_.post(Task::sleeperWakes);
    }
    scheduledSnapshot_ = ++lastProcess_;
    agenda_.post(Task::snapshotBegins, 0, *scheduledSnapshot_);
}

void RevealModel::snapshotBegins(ProcessId process) {
    if (process != scheduledSnapshot_)
        return;
    scheduledSnapshot_.reset();
    snapshotWait_ = agenda_.wait(Wait::snapshot, snapshotDelay);
}

void RevealModel::snapshotDue() {
    snapshotWait_.reset();
    beginPass({});
}

void RevealModel::openPanel() {
    if (geometry_.screens.empty())
        return;
    Pass pass{.isForPanel = true, .panel = panelPlace()};
    if (level_ != RevealLevel::none) {
        beginPass(pass);
    } else if (isSnapshotOutdated()) {
        take(preferences_.alwaysHiddenEnabled ? Cause::refreshWithAlwaysHidden
                                              : Cause::refreshWithoutAlwaysHidden);
        pass.hidesAfterwards = true;
        passes_[++lastProcess_] = pass;
        agenda_.wait(Wait::panelRefresh, refreshDelay, lastProcess_);
    } else {
        showPanel(pass.panel);
    }
}

bool RevealModel::isSnapshotOutdated() const {
    return (knownHidden_.empty() && knownAlwaysHidden_.empty()) ||
           (preferences_.refreshPanelOnOpen && now() - snapshotDate_ > oldestSnapshot);
}

void RevealModel::panelRefreshOver(ProcessId process) {
    beginPass(passes_.extract(process).mapped());
}

void RevealModel::beginPass(Pass pass) {
    const bool isPossible = level_ != RevealLevel::none && !geometry_.screens.empty();
    if (!isPossible) {
        finishPass(pass);
        return;
    }
    if (!findHiddenItems(pass) || !mayCaptureScreen_) {
        store(pass);
        finishPass(pass);
        return;
    }
    passes_[++lastProcess_] = std::move(pass);
    agenda_.wait(Wait::query, captureTimes_[queryTime], lastProcess_);
}

void RevealModel::queryOver(ProcessId process) {
    Pass& pass = passes_.at(process);
    const std::string names = pass.hidden + pass.alwaysHidden;
    for (std::size_t place = 0; place < names.size(); place += hiddenName.size()) {
        const bool isHidden = names.compare(place, hiddenName.size(), hiddenName) == 0;
        ++pass.pictures;
        agenda_.wait(Wait::picture, captureTimes_[isHidden ? hiddenItemTime : alwaysHiddenItemTime], process);
    }
}

void RevealModel::pictureOver(ProcessId process) {
    if (--passes_.at(process).pictures > 0)
        return;
    const Pass pass = passes_.extract(process).mapped();
    for (const std::string& name : {hiddenName, alwaysHiddenName}) {
        if ((pass.hidden + pass.alwaysHidden).find(name) != std::string::npos)
            pictured_.insert(name);
    }
    store(pass);
    finishPass(pass);
}

bool RevealModel::findHiddenItems(Pass& pass) const {
    const auto divider = preferences_.alwaysHiddenEnabled && level_ == RevealLevel::all
                             ? geometry_.alwaysHiddenDividerMinX()
                             : std::nullopt;
    pass.isClassified = divider.has_value();
    if (!windowServerAnswers_)
        return false;
    const auto sort = [&](const ModelGeometry::Span& span, const std::string& name) {
        if (!geometry_.isOnPrimaryScreen(span))
            return;
        const bool isAlwaysHidden = divider && (span.minX + span.maxX) / 2 < *divider;
        (isAlwaysHidden ? pass.alwaysHidden : pass.hidden) += name;
    };
    sort(geometry_.alwaysHiddenItem(), alwaysHiddenName);
    sort(geometry_.hiddenItem(), hiddenName);
    return !pass.hidden.empty() || !pass.alwaysHidden.empty();
}

void RevealModel::store(const Pass& pass) {
    knownHidden_ = pass.hidden;
    if (pass.isClassified) {
        knownAlwaysHidden_ = pass.alwaysHidden;
    } else {
        for (const std::string& name : {alwaysHiddenName, hiddenName}) {
            const auto place = knownAlwaysHidden_.find(name);
            if (place != std::string::npos && pass.hidden.find(name) != std::string::npos)
                knownAlwaysHidden_.erase(place, name.size());
        }
    }
    snapshotDate_ = now();
}

void RevealModel::finishPass(const Pass& pass) {
    if (!pass.isForPanel)
        return;
    if (pass.hidesAfterwards)
        take(Cause::refreshOver);
    showPanel(pass.panel);
}

Point RevealModel::panelPlace() const {
    const ArrangedScreen& screen = geometry_.screens.front();
    const double right = screen.x + screen.width;
    const double toggleMiddle = right - ModelGeometry::otherItemWidth - ModelGeometry::toggleWidth / 2;
    const double x = std::max(screen.x + screenMargin, std::min(toggleMiddle - panelSize.width / 2,
                                                                right - panelSize.width - screenMargin));
    return {x, screen.y + screen.height - geometry_.thickness - panelDistance - panelSize.height};
}

bool RevealModel::isPointerInPanel() const {
    return panel_ && geometry_.pointerX >= panel_->x && geometry_.pointerX < panel_->x + panelSize.width &&
           geometry_.pointerY >= panel_->y && geometry_.pointerY < panel_->y + panelSize.height;
}

void RevealModel::closePanel() {
    panel_.reset();
}

void RevealModel::showPanel(const Point& place) {
    closedPanel_ = {};
    panel_ = place;
    entries_ = knownHidden_ + knownAlwaysHidden_;
}

void RevealModel::pressedInWindow(bool rightButton) {
    closedPanel_[rightButton ? 1 : 0] = panel_.has_value();
    closePanel();
}

}  // namespace velmo
