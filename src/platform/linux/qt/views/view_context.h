#pragma once

#include "text_style.h"
#include "view_modifier.h"

#include <QString>

#include <functional>
#include <optional>

namespace velmo {

/// What a view takes from the views around it and from its own modifiers.
struct ViewContext {
    Font font;
    SemanticColor color;
    /// Of texts and symbols, whatever their colours.
    double opacity = 1;
    std::optional<SingleLine> singleLine = {};
    bool isEnabled = true;
    /// The direction of the stack around it.
    Qt::Orientation axis = Qt::Vertical;
    QString help = {};
    QString accessibilityLabel = {};
    std::optional<ShortcutKey> shortcut = {};
    /// To be called after the user has changed a control: it shows what is described, not what was done to
    /// it.
    std::function<void()> reassert = {};

    /// For the views inside: what was said of this one alone is gone.
    ViewContext forChildren(Qt::Orientation newAxis) const {
        ViewContext inner = *this;
        inner.axis = newAxis;
        inner.help.clear();
        inner.accessibilityLabel.clear();
        inner.shortcut.reset();
        return inner;
    }
};

}  // namespace velmo
