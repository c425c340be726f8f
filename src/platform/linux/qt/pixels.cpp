#include "pixels.h"

#include <QGuiApplication>
#include <QScreen>

namespace velmo {

namespace {

const QScreen* screenAt(const QPointF& pixel) {
    for (const auto* screen : QGuiApplication::screens()) {
        const QRect scaled = screen->geometry();
        const QRectF pixels(scaled.topLeft(), QSizeF(scaled.size()) * screen->devicePixelRatio());
        if (pixels.contains(pixel))
            return screen;
    }
    return QGuiApplication::primaryScreen();
}

}  // namespace

QPointF fromPixels(const QPointF& pixel) {
    const auto* screen = screenAt(pixel);
    if (!screen)
        return pixel;
    const QPointF corner = screen->geometry().topLeft();
    return corner + (pixel - corner) / screen->devicePixelRatio();
}

QPointF toPixels(const QPointF& place) {
    const auto* screen = QGuiApplication::screenAt(place.toPoint());
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    if (!screen)
        return place;
    const QPointF corner = screen->geometry().topLeft();
    return corner + (place - corner) * screen->devicePixelRatio();
}

qreal ratioAt(const QPointF& pixel) {
    const auto* screen = screenAt(pixel);
    return screen ? screen->devicePixelRatio() : 1;
}

}  // namespace velmo
