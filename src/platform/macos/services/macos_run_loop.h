#pragma once

#include "run_loop.h"

#include <deque>
#include <functional>
#include <memory>

namespace velmo::macos {

/// The main thread's run loop, which the application runs. Its work goes on while a menu is open.
class MacosRunLoop : public RunLoop {
public:
    MacosRunLoop() = default;
    ~MacosRunLoop() override;
    MacosRunLoop(const MacosRunLoop&) = delete;
    MacosRunLoop& operator=(const MacosRunLoop&) = delete;

    Date now() const override;
    void post(std::function<void()> work) override;
    std::shared_ptr<Timer> schedule(Seconds interval, std::function<void()> work) override;
    std::shared_ptr<Timer> scheduleRepeating(Seconds interval, Seconds tolerance,
                                             std::function<void()> work) override;

private:
    void runPosted();

    std::deque<std::function<void()>> posted_;
    std::shared_ptr<Timer> turn_;
};

}  // namespace velmo::macos
