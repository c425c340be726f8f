#include "activity.h"

namespace velmo::macos {

Activity::Activity()
    : token_(process_.beginActivity(NSActivityOptions::userInitiatedAllowingIdleSystemSleep,
                                    NSString::from("Waiting for a moment"))) {}

std::shared_ptr<Activity> Activity::shared() {
    static std::weak_ptr<Activity> begun;
    std::shared_ptr<Activity> activity = begun.lock();
    if (!activity) {
        activity.reset(new Activity);
        begun = activity;
    }
    return activity;
}

Activity::~Activity() {
    process_.endActivity(token_);
}

}  // namespace velmo::macos
