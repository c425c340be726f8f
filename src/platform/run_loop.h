#pragma once

#include <functional>
#include <memory>

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
};

/// The main thread's event loop and its clocks.
class RunLoop {
public:
    virtual ~RunLoop() = default;

    /// The time of day.
    virtual Date now() const = 0;
    /// Runs the work once what runs now has returned, after everything posted before it.
    virtual void post(std::function<void()> work) = 0;
    /// Runs the work once, not before `interval` seconds of the monotonic clock have passed.
    virtual std::shared_ptr<Timer> schedule(Seconds interval, std::function<void()> work) = 0;
    /// Runs the work every `interval` seconds from now on until the timer is invalidated, also while a menu
    /// is open. The system may be late by up to `tolerance` seconds, and begin sooner, together with
    /// work that is repeated as often: it wakes once for both. Turns that were missed are not made up for.
    virtual std::shared_ptr<Timer> scheduleRepeating(Seconds interval, Seconds tolerance,
                                                     std::function<void()> work) = 0;
};

}  // namespace velmo
