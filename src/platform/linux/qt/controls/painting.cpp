#include "painting.h"

#include "linux/qt/style.h"

#include <QWidget>

namespace velmo {

namespace {

constexpr qreal ringWidth = 2;

}  // namespace

ControlPainter::ControlPainter(QWidget& control) : QPainter(&control), control_(control) {
    setRenderHint(Antialiasing);
    if (!control.isEnabled())
        setOpacity(style::disabledOpacity);
}

void ControlPainter::fillRounded(const QRectF& area, const QColor& color, qreal radius) {
    setPen(Qt::NoPen);
    setBrush(color);
    drawRoundedRect(area, radius, radius);
}

void ControlPainter::strokeRounded(const QRectF& area, const QColor& color, qreal radius, qreal width) {
    const qreal half = width / 2;
    setPen(QPen(color, width));
    setBrush(Qt::NoBrush);
    drawRoundedRect(area.adjusted(half, half, -half, -half), radius - half, radius - half);
}

/// Seen by whoever works with keys; a click leaves no ring on what was clicked.
bool ControlPainter::showsFocus() const {
    return control_.hasFocus() && control_.window()->testAttribute(Qt::WA_KeyboardFocusChange);
}

void ControlPainter::focusRing(const QRectF& area, qreal radius) {
    if (showsFocus())
        strokeRounded(area, style::color({ColorRole::accent, 0.75}), radius, ringWidth);
}

void ControlPainter::focusRingOnAccent(const QRectF& area, qreal radius) {
    constexpr qreal rim = 1.5;
    if (showsFocus())
        strokeRounded(area.adjusted(rim, rim, -rim, -rim), Qt::white, radius - rim);
}

void ControlPainter::face(const QRectF& area, bool isPressed) {
    fillRounded(area, style::control(), style::controlRadius);
    if (isPressed)
        fillRounded(area, style::color({ColorRole::primary, 0.1}), style::controlRadius);
    strokeRounded(area, style::border(), style::controlRadius);
    focusRing(area, style::controlRadius);
}

}  // namespace velmo
