#include "shape_view.h"

#include "control_layout.h"
#include "macos/appkit/ns_bezier_path.h"
#include "macos/desktop/color_from.h"

#include <algorithm>

namespace velmo::macos {

ShapeView::ShapeView(const NSView& surface, const NSView& above) {
    if (above)
        surface.addSubview(instance_.object(), NSWindowOrderingMode::below, above);
    else
        surface.addSubview(instance_.object());
}

ShapeView::~ShapeView() {
    instance_.object().removeFromSuperview();
}

void ShapeView::display(const Background& background) {
    if (background_ == background)
        return;
    background_ = background;
    instance_.object().setNeedsDisplay();
}

void ShapeView::place(const Rect& area) {
    macos::place(instance_.object(), area);
}

void ShapeView::draw(const CGRect& /*dirty*/) {
    // Asked for here, where it is known whether the view is light or dark.
    colorFrom(background_.color.role).withAlpha(background_.color.opacity).setFill();
    const Rect area = rectOf(instance_.object().bounds());
    const NSBezierPath path = NSBezierPath::create();
    if (background_.shape == ShapeKind::circle) {
        const double side = std::min(area.width, area.height);
        path.appendOval({{area.midX() - side / 2, area.midY() - side / 2}, {side, side}});
    } else {
        path.appendRoundedRect(cgRect(area), background_.cornerRadius, background_.cornerRadius);
    }
    path.fill();
}

}  // namespace velmo::macos
