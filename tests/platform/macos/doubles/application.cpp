#include "platform/macos/doubles/application.h"

#include "macos/appkit/ns_application.h"
#include "platform/macos/doubles/added_method.h"
#include "platform/macos/doubles/double_system.h"
#include "platform/macos/doubles/record_class.h"

namespace velmo::macos::doubles {
namespace {

NSObject sharedApplication(const NSObject& applicationClass) {
    if (system().hasDisplay)
        return callOwn<&sharedApplication, NSObject>(applicationClass);
    if (!system().application)
        system().application = makeRecord("VelmoApplicationDouble");
    return Object::share<NSObject>(system().application.get());
}

/// Not retained, as the system does not.
void setDelegate(const NSObject& /*application*/, Id delegate) {
    system().applicationDelegate = delegate;
}

bool setActivationPolicy(const NSObject& /*application*/, NSInteger policy) {
    system().activationPolicy = policy;
    return true;
}

void setMainMenu(const NSObject& application, const Object& menu) {
    setMember(application, "mainMenu", menu);
}

void run(const NSObject& /*application*/) {
    Message<"NSApplicationDelegate", false, "applicationDidFinishLaunching:", void, Object>::send(
        system().applicationDelegate, Object());
    if (system().whileApplicationRuns)
        system().whileApplicationRuns();
}

void activate(const NSObject& /*application*/, bool /*ignoring*/) {
    ++system().activations;
}
void terminate(const NSObject& /*application*/, const Object& /*sender*/) {
    ++system().terminations;
}
NSEvent currentEvent(const NSObject& /*application*/) {
    return Object::share<NSEvent>(system().currentEvent.get());
}

}  // namespace

void addApplication() {
    const RawClass application = makeRecordClass("VelmoApplicationDouble");
    setMethod<"setDelegate:", &setDelegate>(application);
    setMethod<"setActivationPolicy:", &setActivationPolicy>(application);
    setMethod<"setMainMenu:", &setMainMenu>(application);
    setMethod<"run", &run>(application);
    setMethod<"activateIgnoringOtherApps:", &activate>(application);
    setMethod<"terminate:", &terminate>(application);
    setMethod<"currentEvent", &currentEvent>(application);
    objc_registerClassPair(application);
    overrideMethod<"sharedApplication", &sharedApplication>(metaclassOf(classNamed<"NSApplication">()));
}

bool reopenApplication(bool hasVisibleWindows) {
    const NSApplication application = NSApplication::shared();
    const auto delegate = system().hasDisplay
                              ? Message<"NSApplication", false, "delegate", Object>::send(application.get())
                              : Object::share(system().applicationDelegate);
    return Message<"NSApplicationDelegate", false, "applicationShouldHandleReopen:hasVisibleWindows:", bool,
                   Object, bool>::send(delegate.get(), application, hasVisibleWindows);
}

}  // namespace velmo::macos::doubles
