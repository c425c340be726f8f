#include "time_zone_reset.h"

#include "macos/foundation/ns_time_zone.h"

namespace velmo::macos {
namespace {

/// Nobody travels faster.
constexpr std::chrono::seconds leastPause{1};

}  // namespace

bool TimeZoneReset::resetUnlessJustDone() {
    if (isResetting_)
        return false;
    const auto now = std::chrono::steady_clock::now();
    if (last_ && now - *last_ < leastPause)
        return true;
    last_ = now;
    isResetting_ = true;
    NSTimeZone::resetSystem();
    isResetting_ = false;
    return true;
}

}  // namespace velmo::macos
