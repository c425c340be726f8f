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
    void updateLabel(std::size_t index);
    void placeLabel(std::size_t index);
    void showLabel();

    std::unique_ptr<ViewButton> button_;
    /// The label and the one for the pressed button, each on a widget of its own. The latter is made for the
    /// first press: most buttons never see one.
    std::unique_ptr<QWidget> faces_[2];
    ViewNodes labels_[2];
    ViewContext labelContext_;
    QSizeF size_;
    std::function<void()> reassert_;
};

}  // namespace velmo
