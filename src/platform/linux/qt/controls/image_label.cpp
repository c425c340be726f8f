#include "image_label.h"

#include "linux/qt/image_painting.h"

#include <QPainter>

#include <utility>

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

void ImageLabel::place(const QRectF& area) {
    const QRect whole = area.toAlignedRect();
    setGeometry(whole);
    const QRectF inside = area.translated(-whole.topLeft());
    if (std::exchange(area_, inside) != inside)
        update();
}

void ImageLabel::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    QRectF place(QPointF(), isResizable_ ? area_.size() : naturalSize());
    place.moveCenter(area_.center());
    paintImage(painter, image_, place, color_);
}

}  // namespace velmo
