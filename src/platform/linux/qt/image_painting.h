#pragma once

#include "image.h"

#include <QColor>
#include <QRectF>

class QPainter;

namespace velmo {

/// Points that an image covers.
QSizeF sizeOf(const Image& image);

/// Paints an image into a rectangle. Symbols and templates take the colour. Bitmaps that are less than
/// a point larger or smaller than the place keep their pixels as they are.
void paintImage(QPainter& painter, const Image& image, const QRectF& place, const QColor& color);

}  // namespace velmo
