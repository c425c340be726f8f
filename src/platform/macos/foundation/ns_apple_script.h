#pragma once

#include "ns_string.h"

namespace velmo::macos {

class NSAppleScript : public ClassOf<NSAppleScript, "NSAppleScript", NSObject> {
public:
    /// None where it cannot be built.
    static NSAppleScript with(const NSString& source) { return make<"initWithSource:">(source); }

    /// Waits until it has run. What goes wrong is not told.
    void execute() const {
        Id* const noErrors = nullptr;
        send<Object, "executeAndReturnError:">(noErrors);
    }
};

}  // namespace velmo::macos
