#include "macos_accessibility.h"

#include "macos/application_services/accessibility.h"
#include "macos/foundation/ns_dictionary.h"
#include "macos/foundation/ns_number.h"

namespace velmo::macos {

bool MacosAccessibility::isProcessTrusted() const {
    return application_services::isProcessTrusted() != 0;
}

bool MacosAccessibility::isProcessTrusted(bool prompts) {
    const NSMutableDictionary options = NSMutableDictionary::create();
    options.setObject(NSNumber::with(prompts), application_services::promptOption.value());
    return application_services::isProcessTrustedWithOptions(options.get()) != 0;
}

}  // namespace velmo::macos
