#pragma once

#include <functional>
#include <memory>
#include <optional>

namespace velmo {

/// A length of time in seconds.
using Seconds = double;

/// A moment in seconds since 1970-01-01 00:00 UTC.
using Date = double;

/// Earlier than every moment that a clock shows: the first day of year 1.
inline constexpr Date distantPast = -62135769600.0;

/// A pending piece of work. The run loop keeps it until it has run or is invalidated; letting go of
/// the handle does not stop it.
class Timer {
public:
    virtual ~Timer() = default;

    /// Prevents the work from running. Harmless afterwards and when repeated.
    virtual void invalidate() = 0;
    /// True until the work has begun to run for the last time or the timer was invalidated.
    virtual bool isValid() const = 0;
    /// Seconds until the work is due. 0 where it is late or will not run.
    virtual Seconds remaining() const = 0;
};

/// When work is repeated.
struct Repetition {
    Seconds interval = 1;
    /// How late the system may be.
    Seconds tolerance = 0;
    /// Until the first time. Absent: an interval.
    std::optional<Seconds> first = {};
};

/// The main thread's event loop and its clocks.
class RunLoop {
public:
    virtual ~RunLoop() = default;

    /// The time of day.
    virtual Date now() const = 0;
    /// Runs the work in a later turn of the loop, after everything posted before it.
    virtual void post(std::function<void()> work) = 0;
    /// Runs the work once, not before `interval` seconds of the monotonic clock have passed.
    virtual std::shared_ptr<Timer> schedule(Seconds interval, std::function<void()> work) = 0;
    /// Runs the work again and again until the timer is invalidated, also while a menu is open. Turns that
    /// were missed are not made up for.
    virtual std::shared_ptr<Timer> scheduleRepeating(const Repetition& repetition,
                                                     std::function<void()> work) = 0;
};

}  // namespace velmo
