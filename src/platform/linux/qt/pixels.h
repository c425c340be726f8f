#pragma once

#include "geometry.h"

#include <QPoint>
#include <QPointF>
#include <QRectF>

class QScreen;

namespace velmo {

/// Null where there is none.
const QScreen* screenWithPixel(const QPointF& pixel);
/// From pixels of the root window to Qt's own coordinates, in which screens keep their places in pixels while
/// what lies on them is scaled.
QPointF fromPixels(const QPointF& pixel);
/// The same for what Qt reckons from the corner of that screen, wherever it lies.
QPointF fromPixels(const QPointF& pixel, const QScreen& screen);
/// The other way round.
QPointF toPixels(const QPointF& place, const QScreen& screen);
/// Pixels for one of Qt's units at a place in pixels of the root window.
qreal ratioAt(const QPointF& pixel);

}  // namespace velmo
