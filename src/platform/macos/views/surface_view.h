#pragma once

#include "macos/appkit/ns_view.h"
#include "macos/objc/instance.h"
#include "placed.h"

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

/// A surface that lies on another one, above what is there, until this goes.
class PlacedSurface {
public:
    explicit PlacedSurface(const NSView& around) : placed_(around, surface_.view()) {}

    const NSView& view() const { return *placed_; }

private:
    SurfaceView surface_;
    Placed<NSView> placed_;
};

}  // namespace velmo::macos
