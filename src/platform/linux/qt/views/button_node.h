#pragma once

#include "linux/qt/controls/view_button.h"
#include "linux/qt/views/view_node.h"

namespace velmo {

class ButtonNode : public ViewNode {
public:
    explicit ButtonNode(QWidget& surface);

protected:
    void apply(const ViewContext& context) override;
    QSizeF contentSize(const QSizeF& offer) const override;
    void placeContent(const QRectF& area) override;
    qreal contentBaseline(const QSizeF& size) const override;

private:
    /// Around the label.
    QSizeF padding() const;
    void showLabel();

    std::unique_ptr<ViewButton> button_;
    /// The label and the one for the pressed button, each on a widget of its own.
    std::unique_ptr<QWidget> faces_[2];
    ViewNodes labels_[2];
    std::function<void()> reassert_;
};

}  // namespace velmo
