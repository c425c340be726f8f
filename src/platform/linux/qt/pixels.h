#pragma once

#include "geometry.h"

#include <QPoint>
#include <QPointF>
#include <QRectF>

namespace velmo {

/// From pixels of the root window to Qt's own coordinates, in which screens keep their places in pixels while
/// what lies on them is scaled.
QPointF fromPixels(const QPointF& pixel);
/// The other way round.
QPointF toPixels(const QPointF& place);
/// Pixels for one of Qt's units at a place in pixels of the root window.
qreal ratioAt(const QPointF& pixel);

}  // namespace velmo
