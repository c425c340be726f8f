#include "pixels.h"

#include <QGuiApplication>
#include <QScreen>

namespace velmo {

namespace {

const QScreen* screenOrPrimary(const QPointF& pixel) {
    const auto* screen = screenWithPixel(pixel);
    return screen ? screen : QGuiApplication::primaryScreen();
}

}  // namespace

const QScreen* screenWithPixel(const QPointF& pixel) {
    for (const auto* screen : QGuiApplication::screens()) {
        const QRect scaled = screen->geometry();
        const QRectF pixels(scaled.topLeft(), QSizeF(scaled.size()) * screen->devicePixelRatio());
        if (pixels.contains(pixel))
            return screen;
    }
    return nullptr;
}

QPointF fromPixels(const QPointF& pixel) {
    const auto* screen = screenOrPrimary(pixel);
    return screen ? fromPixels(pixel, *screen) : pixel;
}

QPointF fromPixels(const QPointF& pixel, const QScreen& screen) {
    const QPointF corner = screen.geometry().topLeft();
    return corner + (pixel - corner) / screen.devicePixelRatio();
}

QPointF toPixels(const QPointF& place, const QScreen& screen) {
    const QPointF corner = screen.geometry().topLeft();
    return corner + (place - corner) * screen.devicePixelRatio();
}

qreal ratioAt(const QPointF& pixel) {
    const auto* screen = screenOrPrimary(pixel);
    return screen ? screen->devicePixelRatio() : 1;
}

}  // namespace velmo
