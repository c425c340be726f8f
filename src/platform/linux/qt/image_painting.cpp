#include "image_painting.h"

#include "linux/drawing/canvas.h"

#include <QImage>
#include <QPainter>

#include <cmath>

namespace velmo {

namespace {

/// On the grid of the device's pixels.
QRectF onPixelGrid(const QPainter& painter, const QRectF& place, const QSize& pixels, qreal ratio) {
    const QPointF origin = painter.deviceTransform().map(QPointF(0, 0));
    const QPointF corner(std::round(origin.x() + place.x() * ratio) - origin.x(),
                         std::round(origin.y() + place.y() * ratio) - origin.y());
    return {corner / ratio, QSizeF(pixels) / ratio};
}

QImage rendered(const Image& image, const QSize& pixels, qreal scale, const QColor& color) {
    Canvas canvas(pixels.width(), pixels.height());
    Appearance appearance;
    appearance.scale = scale;
    canvas.drawImage(image, 0, 0, appearance, {color.redF(), color.greenF(), color.blueF(), color.alphaF()});
    return QImage(canvas.pixels(), canvas.width(), canvas.height(), canvas.stride(),
                  QImage::Format_ARGB32_Premultiplied)
        .copy();
}

QImage pixelsOf(const Bitmap& bitmap) {
    return {bitmap.pixels->data(), bitmap.width, bitmap.height, qsizetype{bitmap.width} * 4,
            QImage::Format_ARGB32_Premultiplied};
}

}  // namespace

QSizeF sizeOf(const Image& image) {
    const Size size = imageSize(image);
    return {size.width, size.height};
}

void paintImage(QPainter& painter, const Image& image, const QRectF& place, const QColor& color) {
    const QSizeF natural = sizeOf(image);
    if (place.isEmpty() || natural.isEmpty())
        return;
    const qreal ratio = painter.device()->devicePixelRatioF();
    QSize pixels = (place.size() * ratio).toSize().expandedTo({1, 1});
    const auto* bitmap = std::get_if<Bitmap>(&image.content);
    const bool keepsPixels = bitmap && bitmap->pixels && bitmap->width > 0 && !image.isTemplate;
    const QImage picture =
        keepsPixels ? pixelsOf(*bitmap) : rendered(image, pixels, pixels.width() / natural.width(), color);
    const QSizeF difference = QSizeF(picture.size()) - place.size() * ratio;
    if (std::abs(difference.width()) < ratio && std::abs(difference.height()) < ratio)
        pixels = picture.size();
    painter.setRenderHint(QPainter::SmoothPixmapTransform, picture.size() != pixels);
    painter.drawImage(onPixelGrid(painter, place, pixels, ratio), picture);
}

}  // namespace velmo
