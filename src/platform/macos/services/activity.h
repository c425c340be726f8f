#pragma once

#include "macos/foundation/ns_process_info.h"

#include <memory>

namespace velmo::macos {

/// While there is one the system takes the program for busy, and neither slows its timers down nor gathers
/// them, as it does with programs that are seldom in front. The computer may sleep all the same.
class Activity {
public:
    /// The one that there is, or a new one.
    static std::shared_ptr<Activity> shared();

    ~Activity();
    Activity(const Activity&) = delete;
    Activity& operator=(const Activity&) = delete;

private:
    Activity();

    NSProcessInfo process_ = NSProcessInfo::current();
    Object token_;
};

}  // namespace velmo::macos
