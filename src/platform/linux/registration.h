#pragma once

#include <functional>
#include <utility>

namespace velmo {

/// Ends what was registered when it goes out of scope.
class Registration {
public:
    Registration() = default;
    explicit Registration(std::function<void()> end) : end_(std::move(end)) {}
    Registration(Registration&& other) noexcept : end_(std::exchange(other.end_, nullptr)) {}
    Registration& operator=(Registration&& other) noexcept {
        std::swap(end_, other.end_);
        return *this;
    }
    Registration(const Registration&) = delete;
    Registration& operator=(const Registration&) = delete;
    ~Registration() {
        if (end_)
            end_();
    }

private:
    std::function<void()> end_;
};

}  // namespace velmo
