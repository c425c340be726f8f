#include "control_nodes.h"

#include "control_layout.h"
#include "leaf_nodes.h"
#include "macos/appkit/ns_event.h"
#include "report.h"

#include <algorithm>
#include <cmath>

namespace velmo::macos {
namespace {

/// Points between a symbol and its text.
constexpr double symbolGap = 8;
constexpr double usualSliderWidth = 160;

/// Meanwhile the thumb or the knob stays under the pointer. What has come of it is shown after the release.
bool isDragging() {
    constexpr NSUInteger leftButton = 1;
    return (NSEvent::pressedMouseButtons() & leftButton) != 0;
}

}  // namespace

ToggleNode::ToggleNode(const NSView& surface) : RowNode(surface), control_(surface, NSSwitch::create()) {
    control_->setControlSize(NSControlSize::small);
}

void ToggleNode::used() {
    report(content<Toggle>().onChange, reassert_, control_->state() != control_state::off);
}

void ToggleNode::apply(const ViewContext& context) {
    const auto& toggle = content<Toggle>();
    reassert_ = context.reassert;
    showTitleOfNamed(toggle.title, context);
    describe(*control_, context.accessibilityLabel.empty() ? toggle.title : context.accessibilityLabel,
             context.help);
    control_->setEnabled(context.isEnabled);
    const NSInteger state = toggle.isOn ? control_state::on : control_state::off;
    if (control_->state() != state && !isDragging())
        control_->setState(state);
}

Size ToggleNode::controlSize(double /*width*/) const {
    return naturalSize(*control_);
}

void ToggleNode::placeControl(const Rect& area) {
    placeAligned(*control_, area);
}

void SliderNode::used() {
    const auto& slider = content<Slider>();
    const double step = slider.step > 0 ? slider.step : 1;
    const double steps = std::round((control_->doubleValue() - slider.minimum) / step);
    const double value = std::clamp(slider.minimum + steps * step, slider.minimum, slider.maximum);
    // A drag comes here for each point.
    if (value != slider.value)
        report(slider.onChange, reassert_, value);
    else
        reassert_();
}

void SliderNode::apply(const ViewContext& context) {
    const auto& slider = content<Slider>();
    reassert_ = context.reassert;
    describe(*control_, context.accessibilityLabel, context.help);
    control_->setEnabled(context.isEnabled);
    control_->setMinValue(slider.minimum);
    control_->setMaxValue(slider.maximum);
    if (control_->doubleValue() != slider.value && !isDragging())
        control_->setDoubleValue(slider.value);
}

Size SliderNode::contentSize(const Size& offer) const {
    return {std::min(usualSliderWidth, offer.width), naturalSize(*control_).height};
}

void SliderNode::placeContent(const Rect& area) {
    placeAligned(*control_, area);
}

void LabeledContentNode::apply(const ViewContext& context) {
    showTitle(content<LabeledContent>().title, context);
    ViewContext inner = context.forChildren(Axis::horizontal);
    inner.color = {ColorRole::secondary};
    children_.update(view().children, inner, surface());
}

Size LabeledContentNode::controlSize(double width) const {
    return children_.empty() ? Size{} : children_[0].sizeThatFits({width, unlimited});
}

void LabeledContentNode::placeControl(const Rect& area) {
    if (!children_.empty())
        children_[0].place(area);
}

void LabelNode::apply(const ViewContext& context) {
    const Image& image = content<Label>().image;
    image_.display(imageIn(image, context), {ColorRole::accent}, false);
    describe(image_.view(), image.accessibilityDescription, {});
    setAccessibilityElement(image_.view(), !image.accessibilityDescription.empty());
    children_.update(view().children, context.forChildren(Axis::horizontal), surface());
}

double LabelNode::textLeft() const {
    return image_.naturalSize().width + symbolGap;
}

Size LabelNode::contentSize(const Size& offer) const {
    const Size text =
        children_.empty() ? Size{} : children_[0].sizeThatFits({offer.width - textLeft(), unlimited});
    return {textLeft() + text.width, std::max(text.height, image_.naturalSize().height)};
}

void LabelNode::placeContent(const Rect& area) {
    const Size symbol = image_.naturalSize();
    image_.place({area.x, area.y + (area.height - symbol.height) / 2, symbol.width, symbol.height});
    if (children_.empty())
        return;
    const Size text = children_[0].sizeThatFits({area.width - textLeft(), unlimited});
    children_[0].place(
        {area.x + textLeft(), area.y + (area.height - text.height) / 2, text.width, text.height});
}

}  // namespace velmo::macos
