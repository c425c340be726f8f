#include "image_label.h"

#include "linux/qt/image_painting.h"

#include <QPainter>

namespace velmo {

ImageLabel::ImageLabel(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void ImageLabel::display(const Image& image, const QColor& color, bool isResizable) {
    if (image == image_ && color == color_ && isResizable == isResizable_)
        return;
    image_ = image;
    color_ = color;
    isResizable_ = isResizable;
    update();
}

QSizeF ImageLabel::naturalSize() const {
    return sizeOf(image_);
}

void ImageLabel::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const QSizeF size = isResizable_ ? QSizeF(rect().size()) : naturalSize();
    const QPointF corner((width() - size.width()) / 2, (height() - size.height()) / 2);
    paintImage(painter, image_, {corner, size}, color_);
}

}  // namespace velmo
