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

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Image image_;
};

}  // namespace velmo
