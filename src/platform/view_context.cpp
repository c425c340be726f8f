#include "view_context.h"

#include <algorithm>

namespace velmo {
namespace {

struct AddToContext {
    ViewContext& context;

    void operator()(const Font& font) const { context.font = font; }
    void operator()(const Foreground& foreground) const { context.color = foreground.color; }
    void operator()(const SingleLine& singleLine) const { context.singleLine = singleLine; }
    void operator()(const Help& help) const { context.help = help.text; }
    void operator()(const Disabled& disabled) const {
        context.isEnabled = context.isEnabled && !disabled.isDisabled;
    }
    void operator()(const AccessibilityLabel& label) const { context.accessibilityLabel = label.text; }
    void operator()(const KeyboardShortcut& shortcut) const { context.shortcut = shortcut.key; }
    void operator()(const Padding& /*padding*/) const {}
    void operator()(const Frame& /*frame*/) const {}
    void operator()(const Background& /*background*/) const {}
};

}  // namespace

ViewContext ViewContext::with(const std::vector<Modifier>& modifiers) const {
    ViewContext own = *this;
    // From the outside in: what stands closest to the view holds.
    std::for_each(modifiers.rbegin(), modifiers.rend(),
                  [&](const Modifier& modifier) { std::visit(AddToContext{own}, modifier); });
    return own;
}

ViewContext ViewContext::forChildren(Axis newAxis) const {
    ViewContext inner = *this;
    inner.axis = newAxis;
    inner.help.clear();
    inner.accessibilityLabel.clear();
    inner.shortcut.reset();
    return inner;
}

}  // namespace velmo
