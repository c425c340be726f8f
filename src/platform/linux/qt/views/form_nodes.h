#pragma once

#include "linux/qt/controls/text_label.h"
#include "linux/qt/views/view_node.h"

class QScrollArea;

namespace velmo {

/// Sections below each other, which scroll where there is not enough room.
class FormNode : public ViewNode {
public:
    explicit FormNode(QWidget& surface);
    ~FormNode() override;

protected:
    void apply(const ViewContext& context) override;
    QSizeF contentSize(const QSizeF& offer) const override;
    void placeContent(const QRectF& area) override;
    bool contentExpands(Qt::Orientation /*direction*/) const override { return true; }

private:
    qreal heightFor(qreal width) const;
    /// In that width, of which the scroll bar takes `bar`.
    void placeSections(qreal width, qreal bar);

    std::unique_ptr<QScrollArea> area_;
    ViewNodes sections_;
};

/// A header, a rounded group of rows with hairlines between them, and a footer.
class SectionNode : public ViewNode {
public:
    explicit SectionNode(QWidget& surface);
    ~SectionNode() override;

protected:
    void apply(const ViewContext& context) override;
    QSizeF contentSize(const QSizeF& offer) const override;
    void placeContent(const QRectF& area) override;

private:
    class Group;

    qreal rowHeight(const ViewNode& row, qreal width) const;

    std::unique_ptr<TextLabel> header_;
    std::unique_ptr<Group> group_;
    std::unique_ptr<TextLabel> footer_;
    ViewNodes rows_;
};

}  // namespace velmo
