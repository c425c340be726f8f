#pragma once

#include "linux/qt/controls/text_label.h"
#include "linux/qt/views/view_node.h"

namespace velmo {

/// A title at the leading end of a row and a control at the other.
class RowNode : public ViewNode {
public:
    explicit RowNode(QWidget& surface);

protected:
    void showTitle(const std::string& title, const ViewContext& context);
    /// What the control wants where that much width is left for it.
    virtual QSizeF controlSize(qreal width) const = 0;
    virtual void placeControl(const QRectF& area) = 0;
    /// True where the control takes what the title leaves.
    virtual bool controlExpands() const { return false; }

    QSizeF contentSize(const QSizeF& offer) const override;
    void placeContent(const QRectF& area) override;
    bool contentExpands(Qt::Orientation direction) const override { return direction == Qt::Horizontal; }
    bool contentCanShrink() const override { return true; }
    qreal contentBaseline(const QSizeF& size) const override;

private:
    struct Parts {
        QSizeF title;
        QSizeF control;
    };
    Parts parts(qreal width) const;

    std::unique_ptr<TextLabel> title_;
};

}  // namespace velmo
