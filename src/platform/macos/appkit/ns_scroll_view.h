#pragma once

#include "ns_view.h"

namespace velmo::macos {

class NSScrollView : public ClassOf<NSScrollView, "NSScrollView", NSView> {
public:
    /// Scrolls upwards and downwards where there is need to, and has no look of its own.
    static NSScrollView create() {
        NSScrollView made = make<"initWithFrame:">(CGRect{});
        made.send<void, "setHasVerticalScroller:">(true);
        made.send<void, "setAutohidesScrollers:">(true);
        made.send<void, "setDrawsBackground:">(false);
        return made;
    }

    void setDocumentView(const NSView& view) const { send<void, "setDocumentView:">(view); }
    /// What is seen of the document.
    CGSize contentSize() const { return send<CGSize, "contentSize">(); }
};

}  // namespace velmo::macos
