#include "model/model_agenda.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace velmo {

std::optional<ModelAgenda::Posted> ModelAgenda::takePosted() {
    if (posted_.empty())
        return std::nullopt;
    const Posted first = posted_.front();
    posted_.pop_front();
    return first;
}

ModelAgenda::WaitId ModelAgenda::wait(Wait kind, double seconds, ProcessId process) {
    constexpr double perSecond = 1e9;
    waits_.push_back(
        {nanoseconds_ + std::llround(std::max(seconds, 0.0) * perSecond), nextId_, kind, process});
    return nextId_++;
}

void ModelAgenda::cancel(std::optional<WaitId> id) {
    std::erase_if(waits_, [id](const Waiting& waiting) { return waiting.id == id; });
}

bool ModelAgenda::isWaiting(Wait kind) const {
    return std::any_of(waits_.begin(), waits_.end(),
                       [kind](const Waiting& waiting) { return waiting.kind == kind; });
}

std::vector<ModelAgenda::Waiting>::const_iterator ModelAgenda::earliest() const {
    return std::min_element(waits_.begin(), waits_.end(), [](const Waiting& a, const Waiting& b) {
        return std::tie(a.due, a.id) < std::tie(b.due, b.id);
    });
}

std::optional<std::int64_t> ModelAgenda::nanosecondsToNextWait() const {
    if (waits_.empty())
        return std::nullopt;
    return earliest()->due - nanoseconds_;
}

std::optional<ModelAgenda::Over> ModelAgenda::takeNextWait(std::int64_t end) {
    const auto next = earliest();
    if (next == waits_.end() || next->due > end)
        return std::nullopt;
    const Over over{next->kind, next->process};
    nanoseconds_ = next->due;
    waits_.erase(next);
    return over;
}

}  // namespace velmo
