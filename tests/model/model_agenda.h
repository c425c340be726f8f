#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <vector>

namespace velmo {

/// Work that the model has before it: what is posted, in order, and what waits for its moment.
class ModelAgenda {
public:
    enum class Wait {
        rehide,
        clickOutside,
        hover,
        clockTick,
        calendarTick,
        snapshot,
        panelRefresh,
        query,
        picture,
        activation,
        press,
        release
    };
    using WaitId = std::uint64_t;

    enum class Task {
        rehideFired,
        clickedOutside,
        scrolled,
        showOnHoverChanged,
        delayChanged,
        styleChanged,
        alwaysHiddenChanged,
        clockEnabledChanged,
        clockTicked,
        shortcutsChanged,
        toggleShortcutPressed,
        panelShortcutPressed,
        snapshotBegins,
        sleeperWakes,
        panelOpens,
        panelCloses,
        entryActivated
    };
    /// Tells apart what goes on several times at once.
    using ProcessId = std::uint64_t;
    struct Posted {
        Task task;
        /// A scrolling delta, or 1 for on and 0 for off.
        double value = 0;
        ProcessId process = 0;
    };
    struct Over {
        Wait kind;
        ProcessId process;
    };

    void post(Task task, double value = 0, ProcessId process = 0) {
        posted_.push_back({task, value, process});
    }
    std::optional<Posted> takePosted();
    std::size_t postedCount() const { return posted_.size(); }

    WaitId wait(Wait kind, double seconds, ProcessId process = 0);
    /// Harmless where the wait is over.
    void cancel(std::optional<WaitId> id);
    bool isWaiting(Wait kind) const;
    std::size_t waitCount() const { return waits_.size(); }
    std::optional<std::int64_t> nanosecondsToNextWait() const;
    /// Goes to the moment of the earliest wait and ends it. Absent where none is over by `end`.
    std::optional<Over> takeNextWait(std::int64_t end);

    std::int64_t nanoseconds() const { return nanoseconds_; }
    double seconds() const { return static_cast<double>(nanoseconds_) / 1e9; }
    void goTo(std::int64_t nanoseconds) { nanoseconds_ = nanoseconds; }

private:
    struct Waiting {
        std::int64_t due;
        WaitId id;
        Wait kind;
        ProcessId process;
    };

    std::vector<Waiting>::const_iterator earliest() const;

    std::int64_t nanoseconds_ = 0;
    WaitId nextId_ = 1;
    std::deque<Posted> posted_;
    std::vector<Waiting> waits_;
};

}  // namespace velmo
