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
    /// For a button that is pressed or is not, whichever it is.
    void updateLabel();
    void placeLabel();

    std::unique_ptr<ViewButton> button_;
    /// One view, or none.
    ViewNodes label_;
    ViewContext labelContext_;
    QSizeF size_;
    std::function<void()> reassert_;
};

}  // namespace velmo
