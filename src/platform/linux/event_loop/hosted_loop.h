#pragma once

#include <functional>

namespace velmo {

/// An event loop as another loop sees it that sleeps and wakes in its place.
class HostedLoop {
public:
    virtual ~HostedLoop() = default;

    /// Readable whenever a turn is due.
    virtual int descriptor() const = 0;
    /// In the first turn that comes, after what was posted before.
    virtual void post(std::function<void()> work) = 0;
    /// Does what is due, without sleeping.
    virtual void turn() = 0;
    /// To be called before each sleep. False where something is to be done first, in a turn.
    virtual bool prepareToSleep() = 0;
};

/// A loop that hosts another one.
class LoopHost {
public:
    virtual ~LoopHost() = default;

    /// Dispatches its own events and those of the hosted loop until the condition no longer holds.
    virtual void runWhile(const std::function<bool()>& condition) = 0;
    /// The hosted loop has been stopped: what keeps the host in a loop of its own, a menu for one, ends.
    virtual void interrupt() = 0;
};

}  // namespace velmo
