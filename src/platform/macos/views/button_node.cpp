#include "button_node.h"

#include "button_face.h"
#include "control_layout.h"
#include "leaf_nodes.h"
#include "macos/desktop/color_from.h"
#include "macos/desktop/font_from.h"
#include "macos/desktop/image_from.h"
#include "report.h"

#include <algorithm>

namespace velmo::macos {
namespace {

/// Points that a push button's title leaves free at each side.
constexpr double titleMargin = 12;

char16_t functionKey(ShortcutKey key) {
    switch (key) {
        case ShortcutKey::pageUp:
            return function_key::pageUp;
        case ShortcutKey::pageDown:
            return function_key::pageDown;
        case ShortcutKey::home:
            break;
    }
    return function_key::home;
}

/// The button itself says what lies on it.
void hideFromAssistance(const NSView& surface) {
    for (const NSView& view : surface.subviews().all<NSView>()) {
        setAccessibilityElement(view, false);
        hideFromAssistance(view);
    }
}

}  // namespace

ButtonNode::ButtonNode(const NSView& surface) : ViewNode(surface) {}

ButtonNode::~ButtonNode() {
    label_ = {};
    button_.removeFromSuperview();
}

void ButtonNode::used() {
    report(content<Button>().action, reassert_);
}

void ButtonNode::apply(const ViewContext& context) {
    reassert_ = context.reassert;
    if (isPlain() != (plain_ != nullptr) || !target_) {
        label_ = {};
        button_.removeFromSuperview();
        plain_ = isPlain() ? std::make_unique<PlainButton>([this] { updateLabel(); }) : nullptr;
        surface().addSubview(button());
        target_ = std::make_unique<ControlTarget>(button(), [this] { used(); });
    }
    labelContext_ = context.forChildren(Axis::horizontal);
    font_ = context.font;
    if (isPlain())
        updateLabel();
    else
        applyFace(labelContext_);
    button().setEnabled(context.isEnabled);
    std::string name = context.accessibilityLabel;
    if (name.empty() && !view().children.empty())
        name = buttonFace(view().children.front(), labelContext_).title;
    describe(button(), name, context.help);
    applyKeys(context);
}

void ButtonNode::applyFace(const ViewContext& context) {
    const bool isBordered = content<Button>().style == ButtonStyle::automatic;
    ViewContext labelContext = context;
    if (!isBordered)
        labelContext.color = {ColorRole::accent};
    const ButtonFace face =
        view().children.empty() ? ButtonFace{} : buttonFace(view().children.front(), labelContext);
    button_.setButtonType(NSButtonType::momentaryPushIn);
    button_.setBezelStyle(NSBezelStyle::push);
    button_.setBordered(isBordered);
    button_.setFont(fontFrom(face.font));
    button_.setTitle(NSString::from(face.title));
    button_.setImage(face.image ? imageFrom(*face.image) : NSImage());
    button_.setImagePosition(face.image ? NSCellImagePosition::imageOnly : NSCellImagePosition::noImage);
    button_.setContentTintColor(isBordered ? NSColor() : colorFrom(face.color.role));
    font_ = face.font;
    minWidth_ = face.minWidth > 0 && isBordered ? face.minWidth + 2 * titleMargin : face.minWidth;
}

void ButtonNode::applyKeys(const ViewContext& context) const {
    button().setKeyEquivalent(context.shortcut ? NSString::from(functionKey(*context.shortcut))
                                               : NSString::from(""));
    button().setKeyEquivalentModifierMask(NSEventModifierFlags{});
}

/// For a button that is pressed or is not, whichever it is.
void ButtonNode::updateLabel() {
    const Views& labels = view().children;
    const std::size_t index = plain_->isPressed() && labels.size() > 1 ? 1 : 0;
    label_.update(index < labels.size() ? Views{labels[index]} : Views{}, labelContext_, plain_->surface());
    hideFromAssistance(plain_->surface());
    if (!label_.empty())
        label_[0].place({0, 0, size_.width, size_.height});
}

Size ButtonNode::contentSize(const Size& offer) const {
    if (isPlain())
        return label_.empty() ? Size{} : label_[0].sizeThatFits(offer);
    const Size natural = naturalSize(button_);
    return {std::max(natural.width, minWidth_), natural.height};
}

void ButtonNode::placeContent(const Rect& area) {
    size_ = {area.width, area.height};
    if (!plain_) {
        placeAligned(button_, area);
        return;
    }
    plain_->place(area);
    if (!label_.empty())
        label_[0].place({0, 0, size_.width, size_.height});
}

double ButtonNode::contentBaseline(const Size& size) const {
    if (plain_ && !label_.empty())
        return label_[0].firstBaseline(size);
    return middleBaseline(size.height, font_);
}

}  // namespace velmo::macos
