#include "notification_target.h"

#include "macos/foundation/main_thread.h"
#include "macos/foundation/ns_thread.h"
#include "macos/objc/autorelease_pool.h"

#include <utility>

namespace velmo::macos {

NotificationTarget::NotificationTarget(const NSString& notification, std::function<void()> handler)
    : handler_(std::make_shared<const std::function<void()>>(std::move(handler))) {
    NSNotificationCenter::defaultCenter().add(instance_.object(), selectorNamed<"received:">(), notification);
}

NotificationTarget::~NotificationTarget() {
    NSNotificationCenter::defaultCenter().remove(instance_.object());
}

// NOLINTNEXTLINE(readability-make-member-function-const): methods of a class made here are not.
void NotificationTarget::received(const NSNotification& /*notification*/) {
    // While no events come, the application lets go of nothing; other threads may never do.
    const AutoreleasePool pool;
    // Held while it runs, because it may end the observation.
    const auto tell = [known = std::weak_ptr(handler_)] {
        if (const auto handler = known.lock())
            (*handler)();
    };
    // It comes on the thread of whoever posts it.
    if (NSThread::isMainThread())
        tell();
    else
        runOnMainThread(tell);
}

}  // namespace velmo::macos
