#pragma once

#include "application.h"
#include "macos/appkit/ns_application.h"
#include "macos/foundation/ns_notification_center.h"
#include "macos/objc/instance.h"
#include "undo_target.h"

namespace velmo::macos {

class MacosApplication : public Application {
public:
    MacosApplication();
    ~MacosApplication() override;

    void setDelegate(ApplicationDelegate* delegate) override { delegate_ = delegate; }
    void setActivationPolicy(ActivationPolicy policy) override;
    void run() override;
    void activateIgnoringOtherApps(bool ignoring) override;
    /// Ends the process, as the system does with applications.
    void terminate() override;
    std::optional<Event> currentEvent() const override;

private:
    void didFinishLaunching(const NSNotification& notification);
    /// Otherwise the system complains of it on the error output at each start.
    bool supportsSecureRestorableState(const NSApplication& /*application*/) { return true; }
    bool shouldHandleReopen(const NSApplication& application, bool hasVisibleWindows);

    using Class = Subclass<MacosApplication, "VelmoApplicationDelegate", NSObject,
                           Method<"applicationDidFinishLaunching:", &MacosApplication::didFinishLaunching,
                                  "NSApplicationDelegate">,
                           Method<"applicationSupportsSecureRestorableState:",
                                  &MacosApplication::supportsSecureRestorableState, "NSApplicationDelegate">,
                           Method<"applicationShouldHandleReopen:hasVisibleWindows:",
                                  &MacosApplication::shouldHandleReopen, "NSApplicationDelegate">>;

    NSApplication application_ = NSApplication::shared();
    ApplicationDelegate* delegate_ = nullptr;
    UndoTarget undo_;
    Instance<MacosApplication, Class, NSObject> instance_{*this};
};

}  // namespace velmo::macos
