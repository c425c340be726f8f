#pragma once

#include "text_style.h"
#include "view_content.h"
#include "view_modifier.h"

#include <functional>
#include <optional>
#include <string>

namespace velmo {

enum class Axis { horizontal, vertical };

/// What a view takes from the views around it and from its own modifiers.
struct ViewContext {
    Font font = {};
    SemanticColor color = {};
    /// Of texts and symbols, whatever their colours.
    double opacity = 1;
    std::optional<SingleLine> singleLine = {};
    bool isEnabled = true;
    /// The direction of the stack around it.
    Axis axis = Axis::vertical;
    std::string help = {};
    std::string accessibilityLabel = {};
    std::optional<ShortcutKey> shortcut = {};
    /// Where tabs are to be seen.
    std::function<void(const TabView&)> showTabs = {};
    /// To be called after the user has changed a control: it shows what is described, not what was done to
    /// it.
    std::function<void()> reassert = {};

    /// With what the modifiers of a view say.
    ViewContext with(const std::vector<Modifier>& modifiers) const;
    /// For the views inside: what was said of this one alone is gone.
    ViewContext forChildren(Axis newAxis) const;
};

}  // namespace velmo
