#include "leaf_nodes.h"

#include "macos/desktop/font_from.h"

#include <cmath>

namespace velmo::macos {

void describe(const NSView& view, const std::string& name, const std::string& help) {
    // What has a text of its own says that where there is no name.
    view.setAccessibilityLabel(name.empty() ? NSString() : NSString::from(name));
    // One that stands on the screen would go.
    if (view.toolTip().text() != help)
        view.setToolTip(help.empty() ? NSString() : NSString::from(help));
}

void setAccessibilityElement(const NSView& view, bool isElement) {
    // Controls are told of as their cells. Those that were elements, too, would be told of twice.
    if (const NSCell cell = as<NSControl>(view).cell())
        cell.setAccessibilityElement(isElement);
    else
        view.setAccessibilityElement(isElement);
}

void describeGroup(const NSView& view, const NSString& role, const std::string& name) {
    view.setAccessibilityElement(!name.empty());
    view.setAccessibilityRole(role);
    view.setAccessibilityLabel(NSString::from(name));
}

double middleBaseline(double height, const Font& font) {
    return (height + fontFrom(font).capHeight()) / 2;
}

Size DividerNode::contentSize(const Size& offer) const {
    if (axis_ == Axis::horizontal)
        return {1, std::isfinite(offer.height) ? offer.height : 0};
    return {std::isfinite(offer.width) ? offer.width : 0, 1};
}

void TextNode::apply(const ViewContext& context) {
    label_.display(content<Text>(), lookIn(context));
    describe(label_.view(), context.accessibilityLabel, context.help);
}

void ImageNode::apply(const ViewContext& context) {
    const auto& view = content<ImageView>();
    label_.display(imageIn(view.image, context), context.color, view.isResizable);
    const std::string& name =
        context.accessibilityLabel.empty() ? view.image.accessibilityDescription : context.accessibilityLabel;
    describe(label_.view(), name, context.help);
    // Of a picture without a name the system would say what it is called.
    setAccessibilityElement(label_.view(), !name.empty());
    font_ = context.font;
}

Size ImageNode::contentSize(const Size& offer) const {
    Size size = label_.naturalSize();
    if (content<ImageView>().isResizable) {
        if (std::isfinite(offer.width))
            size.width = offer.width;
        if (std::isfinite(offer.height))
            size.height = offer.height;
    }
    return size;
}

double ImageNode::contentBaseline(const Size& size) const {
    return middleBaseline(size.height, font_);
}

}  // namespace velmo::macos
