#include "hidden_items/panel_item_button_style.h"

#include "views/builders.h"

namespace velmo {

View PanelItemButtonStyle::makeBody(const View& label, bool isPressed) const {
    constexpr double cornerRadius = 6;
    const SemanticColor color =
        isPressed ? SemanticColor{ColorRole::primary, 0.18} : SemanticColor{ColorRole::clear};
    return View(label).with(padding(2, 0)).with(Background{ShapeKind::roundedRectangle, cornerRadius, color});
}

}  // namespace velmo
