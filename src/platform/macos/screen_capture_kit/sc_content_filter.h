#pragma once

#include "sc_window.h"

namespace velmo::macos {

class SCContentFilter : public ClassOf<SCContentFilter, "SCContentFilter", NSObject> {
public:
    /// One window, whatever covers it.
    static SCContentFilter with(const SCWindow& window) {
        return make<"initWithDesktopIndependentWindow:">(window);
    }
};

}  // namespace velmo::macos
