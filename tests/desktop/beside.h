#pragma once

#include <atomic>
#include <functional>
#include <thread>

namespace velmo::desktop {

/// Does something beside the test, and again and again where it is told so.
class Beside {
public:
    enum class Times { once, untilTheEnd };

    Beside(Times times, const std::function<void()>& work) {
        thread_ = std::thread([this, times, work] {
            do
                work();
            while (times == Times::untilTheEnd && !ending_);
        });
    }
    ~Beside() { end(); }
    Beside(const Beside&) = delete;
    Beside& operator=(const Beside&) = delete;

    void end() {
        ending_ = true;
        if (thread_.joinable())
            thread_.join();
    }

private:
    std::atomic<bool> ending_ = false;
    std::thread thread_;
};

}  // namespace velmo::desktop
