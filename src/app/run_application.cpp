#include "app/run_application.h"

#include "app/app_delegate.h"

namespace velmo {

void runApplication(const Platform& platform) {
    AppDelegate delegate(platform);
    platform.application.setDelegate(&delegate);
    platform.application.setActivationPolicy(ActivationPolicy::accessory);
    platform.application.run();
    platform.application.setDelegate(nullptr);
}

}  // namespace velmo
