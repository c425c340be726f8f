#pragma once

#include "view_node.h"

namespace velmo::macos {

class HStackNode : public ViewNode {
public:
    using ViewNode::ViewNode;

protected:
    void apply(const ViewContext& context) override;
    Size contentSize(const Size& offer) const override;
    void placeContent(const Rect& area) override;
    NSView lowestContent() const override { return children_.lowest(); }
    bool contentExpands(Axis direction) const override;
    bool contentCanShrink() const override;
    double contentBaseline(const Size& size) const override;

private:
    /// Of each child, where that much is offered to all.
    std::vector<Size> sizes(const Size& offer) const;
    /// From the top to where the first texts stand; 0 where they do not stand on one line.
    double sharedBaseline(const std::vector<Size>& sizes) const;
    double heightOf(const std::vector<Size>& sizes) const;
    double top(std::size_t index, const Size& size, const Rect& area, double baseline) const;
    double spacing() const;

    ViewNodes children_;
};

class VStackNode : public ViewNode {
public:
    using ViewNode::ViewNode;

protected:
    void apply(const ViewContext& context) override;
    Size contentSize(const Size& offer) const override;
    void placeContent(const Rect& area) override;
    NSView lowestContent() const override { return children_.lowest(); }
    bool contentExpands(Axis direction) const override;
    bool contentCanShrink() const override { return true; }
    double contentBaseline(const Size& size) const override;

private:
    double spacing() const;

    ViewNodes children_;
};

class GridNode : public ViewNode {
public:
    using ViewNode::ViewNode;

protected:
    void apply(const ViewContext& context) override;
    Size contentSize(const Size& offer) const override;
    void placeContent(const Rect& area) override;
    NSView lowestContent() const override { return children_.lowest(); }

private:
    std::size_t columnCount() const;
    std::vector<double> rowHeights() const;

    ViewNodes children_;
};

}  // namespace velmo::macos
