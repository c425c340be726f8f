#pragma once

#include "dates.h"
#include "macos/foundation/ns_notification_center.h"
#include "macos/objc/instance.h"

#include <functional>
#include <memory>

namespace velmo::macos {

/// Calls a function on the main thread whenever somebody posts a notification to the default centre.
class NotificationTarget : public NotificationObserver {
public:
    NotificationTarget(const NSString& notification, std::function<void()> handler);
    ~NotificationTarget() override;

private:
    void received(const NSNotification& notification);

    using Class = Subclass<NotificationTarget, "VelmoNotificationTarget", NSObject,
                           Method<"received:", &NotificationTarget::received>>;

    std::shared_ptr<const std::function<void()>> handler_;
    Instance<NotificationTarget, Class, NSObject> instance_{*this};
};

}  // namespace velmo::macos
