#pragma once

#include "macos/appkit/ns_image_view.h"
#include "placed.h"
#include "view_content.h"
#include "view_context.h"

#include <optional>

namespace velmo::macos {

/// A picture on a surface.
class ImageLabel {
public:
    explicit ImageLabel(const NSView& surface) : view_(surface, NSImageView::create()) {}

    void display(const Image& image, const SemanticColor& color, bool isResizable);
    /// Whole points.
    Size naturalSize() const { return size_; }
    /// Points on the surface.
    void place(const Rect& area);

    const NSView& view() const { return *view_; }

private:
    Placed<NSImageView> view_;
    std::optional<Image> image_;
    Size size_;
};

/// The image with the size and weight that the font around it has, where it names none.
Image imageIn(const Image& image, const ViewContext& context);

}  // namespace velmo::macos
