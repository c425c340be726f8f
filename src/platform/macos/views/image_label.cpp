#include "image_label.h"

#include "control_layout.h"
#include "macos/desktop/color_from.h"
#include "macos/desktop/font_from.h"
#include "macos/desktop/image_from.h"

#include <cmath>

namespace velmo::macos {

void ImageLabel::display(const Image& image, const SemanticColor& color, bool isResizable) {
    view_->setImageScaling(isResizable ? NSImageScaling::axesIndependently
                                       : NSImageScaling::proportionallyDown);
    view_->setContentTintColor(colorFrom(color.role));
    view_->setAlphaValue(color.opacity);
    if (image == image_)
        return;
    image_ = image;
    const NSImage made = imageFrom(image);
    const CGSize size = made.size();
    size_ = {std::ceil(size.width), std::ceil(size.height)};
    view_->setImage(made);
}

void ImageLabel::place(const Rect& area) {
    macos::place(*view_, area);
}

Image imageIn(const Image& image, const ViewContext& context) {
    Image result = image;
    if (auto* symbol = std::get_if<Symbol>(&result.content); symbol != nullptr && symbol->pointSize <= 0) {
        symbol->pointSize = context.font.size ? *context.font.size : fontFrom(context.font).pointSize();
        symbol->weight = context.font.weight.value_or(symbol->weight);
    }
    return result;
}

}  // namespace velmo::macos
