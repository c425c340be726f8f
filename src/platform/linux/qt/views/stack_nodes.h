#pragma once

#include "linux/qt/views/view_node.h"

namespace velmo {

class HStackNode : public ViewNode {
public:
    using ViewNode::ViewNode;

protected:
    void apply(const ViewContext& context) override;
    QSizeF contentSize(const QSizeF& offer) const override;
    void placeContent(const QRectF& area) override;
    bool contentExpands(Qt::Orientation direction) const override;
    bool contentCanShrink() const override;
    qreal contentBaseline(const QSizeF& size) const override;

private:
    /// Of each child, where that much is offered to all.
    std::vector<QSizeF> sizes(const QSizeF& offer) const;
    qreal tallest(const std::vector<QSizeF>& sizes) const;
    qreal spacing() const;

    ViewNodes children_;
};

class VStackNode : public ViewNode {
public:
    using ViewNode::ViewNode;

protected:
    void apply(const ViewContext& context) override;
    QSizeF contentSize(const QSizeF& offer) const override;
    void placeContent(const QRectF& area) override;
    bool contentExpands(Qt::Orientation direction) const override;
    bool contentCanShrink() const override { return true; }
    qreal contentBaseline(const QSizeF& size) const override;

private:
    qreal spacing() const;

    ViewNodes children_;
};

class GridNode : public ViewNode {
public:
    using ViewNode::ViewNode;

protected:
    void apply(const ViewContext& context) override;
    QSizeF contentSize(const QSizeF& offer) const override;
    void placeContent(const QRectF& area) override;

private:
    std::vector<qreal> rowHeights() const;

    ViewNodes children_;
};

}  // namespace velmo
