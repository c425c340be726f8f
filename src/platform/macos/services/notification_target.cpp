#include "notification_target.h"

#include <utility>

namespace velmo::macos {

NotificationTarget::NotificationTarget(const NSString& notification, std::function<void()> handler)
    : handler_(std::move(handler)) {
    NSNotificationCenter::defaultCenter().add(instance_.object(), selectorNamed<"received:">(), notification);
}

NotificationTarget::~NotificationTarget() {
    NSNotificationCenter::defaultCenter().remove(instance_.object());
}

void NotificationTarget::received(const NSNotification& /*notification*/) {
    // A copy, because the handler may end the observation.
    const auto handler = handler_;
    handler();
}

}  // namespace velmo::macos
