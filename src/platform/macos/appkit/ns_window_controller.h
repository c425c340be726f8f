#pragma once

#include "ns_window.h"

namespace velmo::macos {

class NSWindowController : public ClassOf<NSWindowController, "NSWindowController", NSObject> {
public:
    static NSWindowController with(const NSWindow& window) { return make<"initWithWindow:">(window); }

    void setShouldCascadeWindows(bool should) const { send<void, "setShouldCascadeWindows:">(should); }
    void showWindow() const { send<void, "showWindow:">(Object()); }
};

}  // namespace velmo::macos
