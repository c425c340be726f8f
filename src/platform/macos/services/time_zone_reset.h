#pragma once

#include <chrono>
#include <optional>

namespace velmo::macos {

/// Has the program drop the time zone that it keeps once it has asked for it. The system may tell of that in
/// the same way as of a new zone, at once or later; then no other reset follows.
class TimeZoneReset {
public:
    /// False where it is at it already: whoever is told now is told once more.
    bool resetUnlessJustDone();

private:
    bool isResetting_ = false;
    std::optional<std::chrono::steady_clock::time_point> last_;
};

}  // namespace velmo::macos
