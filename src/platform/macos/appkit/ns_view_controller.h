#pragma once

#include "ns_view.h"

namespace velmo::macos {

class NSViewController : public ClassOf<NSViewController, "NSViewController", NSObject> {
public:
    static NSViewController with(const NSView& view) {
        NSViewController made = make<"initWithNibName:bundle:">(NSString(), Object());
        made.send<void, "setView:">(view);
        return made;
    }
};

inline NSWindow NSWindow::with(const NSViewController& content) {
    return sendToClass<NSWindow, "windowWithContentViewController:">(content);
}

}  // namespace velmo::macos
