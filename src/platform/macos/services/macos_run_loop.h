#pragma once

#include "lifetime.h"
#include "run_loop.h"

#include <functional>
#include <memory>

namespace velmo::macos {

/// The main thread's run loop, which the application runs. Its work goes on while a menu is open; only what
/// was posted waits until the menu that such work has opened has closed.
class MacosRunLoop : public RunLoop {
public:
    Date now() const override;
    void post(std::function<void()> work) override;
    std::shared_ptr<Timer> schedule(Seconds interval, std::function<void()> work) override;
    std::shared_ptr<Timer> scheduleRepeating(Seconds interval, Seconds tolerance,
                                             std::function<void()> work) override;

private:
    Lifetime lifetime_;
};

}  // namespace velmo::macos
