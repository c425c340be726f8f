#pragma once

#include "linux/qt/controls/image_label.h"
#include "linux/qt/controls/text_label.h"
#include "linux/qt/views/view_node.h"

namespace velmo {

// Views without children.

class EmptyNode : public ViewNode {
public:
    using ViewNode::ViewNode;

protected:
    void apply(const ViewContext& /*context*/) override {}
    QSizeF contentSize(const QSizeF& /*offer*/) const override { return {0, 0}; }
    void placeContent(const QRectF& /*area*/) override {}
};

class SpacerNode : public EmptyNode {
public:
    using EmptyNode::EmptyNode;

protected:
    void apply(const ViewContext& context) override { axis_ = orientationOf(context.axis); }
    bool contentExpands(Qt::Orientation direction) const override { return direction == axis_; }

private:
    Qt::Orientation axis_ = Qt::Vertical;
};

class DividerNode : public ViewNode {
public:
    explicit DividerNode(QWidget& surface);

protected:
    void apply(const ViewContext& context) override;
    QSizeF contentSize(const QSizeF& offer) const override;
    void placeContent(const QRectF& area) override;
    bool contentExpands(Qt::Orientation direction) const override { return direction != axis_; }

private:
    std::unique_ptr<QWidget> line_;
    Qt::Orientation axis_ = Qt::Vertical;
};

class TextNode : public ViewNode {
public:
    explicit TextNode(QWidget& surface);

protected:
    void apply(const ViewContext& context) override;
    QSizeF contentSize(const QSizeF& offer) const override { return label_->sizeThatFits(offer.width()); }
    void placeContent(const QRectF& area) override { label_->setGeometry(area.toAlignedRect()); }
    bool contentCanShrink() const override { return true; }
    qreal contentBaseline(const QSizeF& /*size*/) const override { return label_->firstBaseline(); }

private:
    std::unique_ptr<TextLabel> label_;
};

class ImageNode : public ViewNode {
public:
    explicit ImageNode(QWidget& surface);

protected:
    void apply(const ViewContext& context) override;
    QSizeF contentSize(const QSizeF& offer) const override;
    void placeContent(const QRectF& area) override { label_->place(area); }
    bool contentExpands(Qt::Orientation /*direction*/) const override {
        return content<ImageView>().isResizable;
    }
    qreal contentBaseline(const QSizeF& size) const override;

private:
    std::unique_ptr<ImageLabel> label_;
    Font font_;
};

/// The image with the size and weight that the font around it has, where it names none.
Image imageIn(const Image& image, const ViewContext& context);
/// The colour of texts and symbols.
QColor colorIn(const ViewContext& context);
/// How a text looks there.
TextLabel::Look lookIn(const ViewContext& context);

}  // namespace velmo
