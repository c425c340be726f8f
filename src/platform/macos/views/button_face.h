#pragma once

#include "view.h"
#include "view_context.h"

#include <optional>
#include <string>

namespace velmo::macos {

/// What of a button's label the system's own button shows by itself.
struct ButtonFace {
    std::string title;
    std::optional<Image> image;
    Font font;
    SemanticColor color;
    /// Points that the label takes at least.
    double minWidth = 0;
};

/// The first text or picture of a label.
ButtonFace buttonFace(const View& label, const ViewContext& context);

}  // namespace velmo::macos
