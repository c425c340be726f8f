#pragma once

#include "macos/appkit/ns_view.h"
#include "macos/objc/instance.h"
#include "view_modifier.h"

namespace velmo::macos {

/// A filled shape on a surface.
class ShapeView {
public:
    /// Directly below another view, if there is one.
    ShapeView(const NSView& surface, const NSView& above);
    ~ShapeView();
    ShapeView(const ShapeView&) = delete;
    ShapeView& operator=(const ShapeView&) = delete;

    void display(const Background& background);
    /// Points on the surface.
    void place(const Rect& area);
    const NSView& view() const { return instance_.object(); }

private:
    void draw(const CGRect& dirty);

    using Class =
        Subclass<ShapeView, "VelmoShapeView", NSView, Method<"drawRect:", &ShapeView::draw, "NSView">>;

    Background background_;
    Instance<ShapeView, Class, NSView> instance_{*this};
};

}  // namespace velmo::macos
