#include "platform/macos/macos_test.h"

#include "macos/foundation/ns_date.h"
#include "macos/foundation/ns_run_loop.h"
#include "macos/foundation/ns_user_defaults.h"

#include <chrono>

namespace velmo::macos {

bool MacosStage::runUntil(const std::function<bool()>& condition) {
    using Clock = std::chrono::steady_clock;
    const auto limit = Clock::now() + std::chrono::seconds(5);
    while (!condition()) {
        if (Clock::now() > limit)
            return false;
        const AutoreleasePool turn;
        const NSDate soon = Message<"NSDate", true, "dateWithTimeIntervalSinceNow:", NSDate, double>::send(
            NSDate::classObject(), 0.01);
        Message<"NSRunLoop", false, "runMode:beforeDate:", bool, NSString, NSDate>::send(
            NSRunLoop::main().get(), NSString::from("NSDefaultRunLoopMode"), soon);
    }
    return true;
}

void MacosStage::runFor(double seconds) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
    runUntil([end] { return std::chrono::steady_clock::now() >= end; });
}

void MacosStage::forgetSettings() {
    for (const char* key :
         {"hasCompletedFirstLaunch", "autoRehide", "rehideDelay", "hideOnClickOutside", "showOnHover",
          "showOnScroll", "alwaysHiddenEnabled", "refreshPanelOnOpen", "clockEnabled", "clockFormat",
          "clickAction", "toggleIconStyle", "hotkey", "panelHotkey"})
        NSUserDefaults::standard().removeObject(NSString::from(key));
}

}  // namespace velmo::macos
