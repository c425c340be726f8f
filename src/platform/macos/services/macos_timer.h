#pragma once

#include "activity.h"
#include "macos/foundation/ns_timer.h"
#include "run_loop.h"

#include <functional>
#include <memory>

namespace velmo::macos {

/// Work on the main run loop, which keeps it while it is pending.
class MacosTimer : public Timer {
public:
    /// Runs once after `interval` seconds.
    static std::shared_ptr<MacosTimer> once(Seconds interval, std::function<void()> work);
    static std::shared_ptr<MacosTimer> repeating(Seconds interval, Seconds tolerance,
                                                 std::function<void()> work);

    void invalidate() override;
    bool isValid() const override { return self_ != nullptr; }

private:
    MacosTimer(Seconds interval, bool repeats, std::function<void()> work);

    static std::shared_ptr<MacosTimer> add(std::shared_ptr<MacosTimer> timer);
    void fire();

    Seconds interval_;
    bool repeats_;
    std::function<void()> work_;
    NSTimer timer_;
    // Both held while the timer is valid.

    std::shared_ptr<MacosTimer> self_;
    std::shared_ptr<Activity> activity_;
};

}  // namespace velmo::macos
