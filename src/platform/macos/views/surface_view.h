#pragma once

#include "macos/appkit/ns_view.h"
#include "macos/objc/instance.h"

namespace velmo::macos {

/// A view for others to lie on, with the origin at the top left.
class SurfaceView {
public:
    const NSView& view() const { return instance_.object(); }

private:
    bool isFlipped() { return true; }

    using Class = Subclass<SurfaceView, "VelmoSurfaceView", NSView,
                           Method<"isFlipped", &SurfaceView::isFlipped, "NSView">>;

    Instance<SurfaceView, Class, NSView> instance_{*this};
};

}  // namespace velmo::macos
