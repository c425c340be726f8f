#include "macos/appkit/ns_workspace.h"
#include "macos/foundation/ns_apple_script.h"
#include "macos/foundation/ns_date_formatter.h"
#include "macos/foundation/ns_notification_center.h"
#include "macos/foundation/ns_number.h"
#include "macos/foundation/ns_process_info.h"
#include "macos/service_management/sm_app_service.h"
#include "platform/macos/doubles/added_method.h"
#include "platform/macos/doubles/application.h"
#include "platform/macos/doubles/calendar_methods.h"
#include "platform/macos/doubles/display.h"
#include "platform/macos/doubles/double_system.h"
#include "platform/macos/doubles/menu_bar.h"
#include "platform/macos/doubles/timers.h"

namespace velmo::macos::doubles {

extern "C" const Id NSLocalizedDescriptionKey;

namespace {

NSTimeZone systemTimeZone(const NSTimeZone& zoneClass) {
    auto& kept = system().keptTimeZone;
    if (!kept && system().timeZone)
        kept = system().timeZone;
    if (!kept)
        kept = callOwn<&systemTimeZone, NSTimeZone>(zoneClass);
    return kept;
}
void resetSystemTimeZone(const NSTimeZone& /*zoneClass*/) {
    system().keptTimeZone = {};
    ++system().timeZoneResets;
    if (system().tellsOfResetsLater)
        return;
    Message<"NSNotificationCenter", false, "postNotificationName:object:", void, NSString, Object>::send(
        NSNotificationCenter::defaultCenter().get(), NSString::from("NSSystemTimeZoneDidChangeNotification"),
        Object());
}

Object beginActivity(const NSProcessInfo& /*process*/, std::uint64_t options, const NSString& reason) {
    system().activities.push_back({options, reason.text(), NSObject::create()});
    return system().activities.back().token;
}
void endActivity(const NSProcessInfo& /*process*/, const Object& token) {
    std::erase_if(system().activities, [&](const BegunActivity& one) { return one.token == token; });
}

NSAppleScript initWithSource(const NSAppleScript& script, const NSString& source) {
    system().scripts.push_back("made: " + source.text());
    return Object::share<NSAppleScript>(script.get());
}

Object executeScript(const NSAppleScript& /*script*/, Id* /*error*/) {
    system().scripts.push_back("executed");
    return {};
}

bool openAddress(const NSWorkspace& /*workspace*/, const NSURL& address) {
    const auto text = Message<"NSURL", false, "absoluteString", NSString>::send(address.get());
    system().openedAddresses.push_back(text.text());
    return true;
}

NSError errorOf(const std::string& text) {
    const NSMutableDictionary details = NSMutableDictionary::create();
    details.setObject(NSString::from(text), Object::share(NSLocalizedDescriptionKey));
    return Message<"NSError", true, "errorWithDomain:code:userInfo:", NSError, NSString, NSInteger,
                   NSMutableDictionary>::send(NSError::classObject(),
                                              NSString::from("SMAppServiceErrorDomain"), NSInteger{1},
                                              details);
}

bool changeLogin(const char* call, std::int64_t status, Id* error) {
    system().loginCalls.emplace_back(call);
    if (system().loginError.empty()) {
        system().loginStatus = status;
        return true;
    }
    *error = errorOf(system().loginError).leaveToPool();
    return false;
}

bool registerLogin(const NSObject& /*service*/, Id* error) {
    return changeLogin("register", system().registeredStatus, error);
}
bool unregisterLogin(const NSObject& /*service*/, Id* error) {
    return changeLogin("unregister", 0, error);
}
NSInteger loginStatus(const NSObject& /*service*/) {
    return system().loginStatus;
}
NSObject mainLoginService(const NSObject& /*serviceClass*/) {
    return Object::adopt<NSObject>(
        Message<"SMAppService", true, "new", NSObject>::send(SMAppService::classObject()).leave());
}

void addLoginService() {
    const RawClass made = objc_allocateClassPair(classNamed<"NSObject">(), "SMAppService", 0);
    setMethod<"registerAndReturnError:", &registerLogin>(made);
    setMethod<"unregisterAndReturnError:", &unregisterLogin>(made);
    setMethod<"status", &loginStatus>(made);
    setMethod<"mainAppService", &mainLoginService>(metaclassOf(made));
    objc_registerClassPair(made);
}

}  // namespace

void addMissingMethods() {
    static const bool isDone = [] {
        addCalendarMethods();
        addTimers();
        const RawClass zones = metaclassOf(classNamed<"NSTimeZone">());
        overrideMethod<"systemTimeZone", &systemTimeZone>(zones);
        setMethod<"resetSystemTimeZone", &resetSystemTimeZone>(zones);
        setMethod<"beginActivityWithOptions:reason:", &beginActivity>(classNamed<"NSProcessInfo">());
        setMethod<"endActivity:", &endActivity>(classNamed<"NSProcessInfo">());
        setMethod<"initWithSource:", &initWithSource>(classNamed<"NSAppleScript">());
        setMethod<"executeAndReturnError:", &executeScript>(classNamed<"NSAppleScript">());
        setMethod<"openURL:", &openAddress>(classNamed<"NSWorkspace">());
        addLoginService();
        addScreenCapture();
        addMenuBar();
        addApplication();
        addDisplay();
        return true;
    }();
    static_cast<void>(isDone);
}

}  // namespace velmo::macos::doubles
