#pragma once

#include "control_layout.h"
#include "image_label.h"
#include "macos/appkit/ns_box.h"
#include "placed.h"
#include "text_label.h"
#include "view_node.h"

namespace velmo::macos {

// Views without children.

class EmptyNode : public ViewNode {
public:
    using ViewNode::ViewNode;

protected:
    void apply(const ViewContext& /*context*/) override {}
    Size contentSize(const Size& /*offer*/) const override { return {}; }
    void placeContent(const Rect& /*area*/) override {}
};

class SpacerNode : public EmptyNode {
public:
    using EmptyNode::EmptyNode;

protected:
    void apply(const ViewContext& context) override { axis_ = context.axis; }
    bool contentExpands(Axis direction) const override { return direction == axis_; }

private:
    Axis axis_ = Axis::vertical;
};

class DividerNode : public ViewNode {
public:
    explicit DividerNode(const NSView& surface)
        : ViewNode(surface), line_(surface, NSBox::with(NSBoxType::separator)) {}

protected:
    void apply(const ViewContext& context) override { axis_ = context.axis; }
    Size contentSize(const Size& offer) const override;
    void placeContent(const Rect& area) override { placeAligned(*line_, area); }
    NSView lowestContent() const override { return *line_; }
    bool contentExpands(Axis direction) const override { return direction != axis_; }

private:
    Placed<NSBox> line_;
    Axis axis_ = Axis::vertical;
};

class TextNode : public ViewNode {
public:
    explicit TextNode(const NSView& surface) : ViewNode(surface), label_(surface) {}

protected:
    void apply(const ViewContext& context) override;
    Size contentSize(const Size& offer) const override { return label_.sizeThatFits(offer.width); }
    void placeContent(const Rect& area) override { label_.place(area); }
    NSView lowestContent() const override { return label_.view(); }
    bool contentCanShrink() const override { return true; }
    double contentBaseline(const Size& /*size*/) const override { return label_.firstBaseline(); }

private:
    TextLabel label_;
};

class ImageNode : public ViewNode {
public:
    explicit ImageNode(const NSView& surface) : ViewNode(surface), label_(surface) {}

protected:
    void apply(const ViewContext& context) override;
    Size contentSize(const Size& offer) const override;
    void placeContent(const Rect& area) override { label_.place(area); }
    NSView lowestContent() const override { return label_.view(); }
    bool contentExpands(Axis /*direction*/) const override { return content<ImageView>().isResizable; }
    double contentBaseline(const Size& size) const override;

private:
    ImageLabel label_;
    Font font_;
};

/// Says of a view what is to be known of it beyond its look.
void describe(const NSView& view, const std::string& name, const std::string& help);
/// Whether assistive programs are to tell of it on its own.
void setAccessibilityElement(const NSView& view, bool isElement);
/// Has assistive programs tell of a view that only holds or surrounds others, where it has a name.
void describeGroup(const NSView& view, const NSString& role, const std::string& name);

/// From the top to where a text of that font would stand, in something of which it is the middle.
double middleBaseline(double height, const Font& font);

}  // namespace velmo::macos
