#include "activity.h"

namespace velmo::macos {

Activity::Activity()
    : token_(process_.beginActivity(NSActivityOptions::userInitiatedAllowingIdleSystemSleep,
                                    NSString::from("Waiting for a moment"))) {}

Activity::~Activity() {
    process_.endActivity(token_);
}

}  // namespace velmo::macos
