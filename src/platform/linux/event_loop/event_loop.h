#pragma once

#include "linux/event_loop/hosted_loop.h"
#include "linux/listeners.h"
#include "linux/registration.h"
#include "run_loop.h"

#include <deque>
#include <functional>
#include <list>
#include <map>
#include <memory>

namespace velmo {

/// The main thread's loop over file descriptors, timers and posted work. It sleeps in the kernel
/// whenever none of them is due. Another loop may host it: then that one sleeps on `descriptor`.
class EventLoop : public RunLoop, public HostedLoop {
public:
    EventLoop();
    ~EventLoop() override;
    EventLoop(const EventLoop&) = delete;
    EventLoop& operator=(const EventLoop&) = delete;

    Date now() const override;
    void post(std::function<void()> work) override;
    std::shared_ptr<Timer> schedule(Seconds interval, std::function<void()> work) override;

    std::shared_ptr<Timer> scheduleRepeating(Seconds interval, Seconds tolerance,
                                             std::function<void()> work) override;

    /// Calls `onReadable` whenever the descriptor can be read or has hung up.
    Registration addSource(int fileDescriptor, std::function<void()> onReadable);
    /// Runs before each sleep, for what has gathered in buffers.
    Registration addBeforeSleep(std::function<void()> work);

    void run();
    /// Runs inside of work that the loop has called, until the condition no longer holds or `stop` was
    /// called. Everything else goes on meanwhile.
    void runWhile(const std::function<bool()>& condition);
    /// Makes `run` return after the work at hand.
    void stop();
    bool isRunning() const { return running_; }

    /// From now on the host sleeps for us. It stays valid for as long as the loop runs.
    void setHost(LoopHost* host) { host_ = host; }
    int descriptor() const override { return poll_; }
    void turn() override;
    bool prepareToSleep() override;

private:
    struct Source {
        int fileDescriptor = -1;
        std::function<void()> onReadable;
        bool ended = false;
    };
    struct Scheduled;
    using Pending = std::multimap<Seconds, std::shared_ptr<Scheduled>>;

    void runPosted();
    void runDueTimers();
    /// When the next timers run. 0 where there is none.
    Seconds deadline() const;
    Seconds nextBeat(Seconds interval) const;
    void armTimer();
    void dispatchSources(int timeout);

    std::deque<std::function<void()>> posted_;
    Pending pending_;
    std::list<std::shared_ptr<Source>> sources_;
    Listeners beforeSleep_;
    LoopHost* host_ = nullptr;
    int poll_ = -1;
    int timer_ = -1;
    Seconds armedFor_ = 0;
    bool running_ = false;
};

}  // namespace velmo
