#pragma once

#include "macos/appkit/ns_box.h"
#include "macos/appkit/ns_scroll_view.h"
#include "placed.h"
#include "surface_view.h"
#include "text_label.h"
#include "view_node.h"

namespace velmo::macos {

/// Sections below each other, which scroll where there is not enough room.
class FormNode : public ViewNode {
public:
    explicit FormNode(const NSView& surface);

protected:
    void apply(const ViewContext& context) override;
    Size contentSize(const Size& offer) const override;
    void placeContent(const Rect& area) override;
    bool contentExpands(Axis /*direction*/) const override { return true; }
    NSView lowestContent() const override { return *area_; }

private:
    double heightFor(double width) const;

    Placed<NSScrollView> area_;
    SurfaceView document_;
    ViewNodes sections_;
};

/// A header, a group of rows with hairlines between them, and a footer.
class SectionNode : public ViewNode {
public:
    explicit SectionNode(const NSView& surface);

protected:
    void apply(const ViewContext& context) override;
    Size contentSize(const Size& offer) const override;
    void placeContent(const Rect& area) override;
    NSView lowestContent() const override { return *box_; }

private:
    double rowHeight(const ViewNode& row, double width) const;
    void placeRows(const Rect& area);
    void matchLines();

    Placed<NSBox> box_;
    TextLabel header_;
    TextLabel footer_;
    /// As large as what is seen of the box. The rows and the lines between them lie on it.
    PlacedSurface group_;
    ViewNodes rows_;
    std::vector<Placed<NSBox>> lines_;
};

}  // namespace velmo::macos
