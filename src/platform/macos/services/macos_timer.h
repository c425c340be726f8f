#pragma once

#include "macos/foundation/ns_timer.h"
#include "run_loop.h"

#include <functional>
#include <memory>
#include <utility>

namespace velmo::macos {

/// Work on the main run loop, which keeps it while it is pending.
class MacosTimer : public Timer {
public:
    /// Runs once after `interval` seconds.
    static std::shared_ptr<MacosTimer> once(Seconds interval, std::function<void()> work);
    static std::shared_ptr<MacosTimer> repeating(Seconds interval, Seconds tolerance,
                                                 std::function<void()> work);

    void invalidate() override;
    bool isValid() const override { return isValid_; }

private:
    MacosTimer(bool repeats, std::function<void()> work) : repeats_(repeats), work_(std::move(work)) {}

    static std::shared_ptr<MacosTimer> add(Seconds interval, bool repeats, std::function<void()> work);

    static void fire(std::shared_ptr<MacosTimer> timer);

    bool repeats_;
    std::function<void()> work_;
    NSTimer timer_;
    bool isValid_ = true;
};

}  // namespace velmo::macos
