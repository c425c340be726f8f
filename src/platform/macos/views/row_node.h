#pragma once

#include "text_label.h"
#include "view_node.h"

namespace velmo::macos {

/// A title at the leading end of a row and a control at the other.
class RowNode : public ViewNode {
public:
    explicit RowNode(const NSView& surface) : ViewNode(surface), title_(surface) {}

protected:
    void showTitle(const std::string& title, const ViewContext& context);
    /// The same, where the control is named as the title, or otherwise: nobody is to be told of both.
    void showTitleOfNamed(const std::string& title, const ViewContext& context);
    /// What the control wants where that much width is left for it.
    virtual Size controlSize(double width) const = 0;
    virtual void placeControl(const Rect& area) = 0;

    Size contentSize(const Size& offer) const override;
    void placeContent(const Rect& area) override;
    bool contentExpands(Axis direction) const override { return direction == Axis::horizontal; }
    bool contentCanShrink() const override { return true; }
    double contentBaseline(const Size& size) const override;
    NSView lowestContent() const override { return title_.view(); }

private:
    struct Parts {
        Size title;
        Size control;
    };
    Parts parts(double width) const;

    TextLabel title_;
};

}  // namespace velmo::macos
