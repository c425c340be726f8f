#pragma once

#include "control_target.h"
#include "image_label.h"
#include "macos/appkit/ns_button.h"
#include "macos/appkit/ns_slider.h"
#include "placed.h"
#include "row_node.h"

#include <functional>

namespace velmo::macos {

class ToggleNode : public RowNode {
public:
    explicit ToggleNode(const NSView& surface);

protected:
    void apply(const ViewContext& context) override;
    Size controlSize(double width) const override;
    void placeControl(const Rect& area) override;

private:
    void used();

    Placed<NSSwitch> control_;
    std::function<void()> reassert_;
    ControlTarget target_{*control_, [this] { used(); }};
};

class SliderNode : public ViewNode {
public:
    explicit SliderNode(const NSView& surface) : ViewNode(surface), control_(surface, NSSlider::create()) {}

protected:
    void apply(const ViewContext& context) override;
    Size contentSize(const Size& offer) const override;
    void placeContent(const Rect& area) override;
    bool contentExpands(Axis direction) const override { return direction == Axis::horizontal; }
    NSView lowestContent() const override { return *control_; }

private:
    void used();

    Placed<NSSlider> control_;
    std::function<void()> reassert_;
    ControlTarget target_{*control_, [this] { used(); }};
};

class LabeledContentNode : public RowNode {
public:
    using RowNode::RowNode;

protected:
    void apply(const ViewContext& context) override;
    Size controlSize(double width) const override;
    void placeControl(const Rect& area) override;

private:
    ViewNodes children_;
};

class LabelNode : public ViewNode {
public:
    explicit LabelNode(const NSView& surface) : ViewNode(surface), image_(surface) {}

protected:
    void apply(const ViewContext& context) override;
    Size contentSize(const Size& offer) const override;
    void placeContent(const Rect& area) override;
    bool contentCanShrink() const override { return true; }
    NSView lowestContent() const override { return image_.view(); }

private:
    double textLeft() const;

    ImageLabel image_;
    ViewNodes children_;
};

}  // namespace velmo::macos
