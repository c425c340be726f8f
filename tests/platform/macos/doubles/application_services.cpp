#include "macos/application_services/accessibility.h"
#include "macos/foundation/ns_number.h"
#include "platform/macos/doubles/double_system.h"

namespace velmo::macos::application_services {

extern "C" {
const Id kAXTrustedCheckOptionPrompt = NSString::from("AXTrustedCheckOptionPrompt").leave();

unsigned char AXIsProcessTrusted() {
    return doubles::system().isTrusted ? 1 : 0;
}

unsigned char AXIsProcessTrustedWithOptions(Id options) {
    const auto prompts = as<NSNumber>(
        Object::share<NSDictionary>(options).objectForKey(NSString::from("AXTrustedCheckOptionPrompt")));
    doubles::system().trustPrompts.push_back(prompts.boolValue());
    return AXIsProcessTrusted();
}
}

}  // namespace velmo::macos::application_services
