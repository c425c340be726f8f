#pragma once

#include "image.h"

#include <QAbstractButton>

namespace velmo {

/// One of the tabs at the top of a window: a symbol above a title.
class TabButton : public QAbstractButton {
public:
    explicit TabButton(QWidget* parent);

    void display(const QString& title, const Image& image);
    QSize sizeHint() const override;
    /// As narrow as it gets with its whole title; narrower, the title ends in an ellipsis.
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Image image_;
};

}  // namespace velmo
