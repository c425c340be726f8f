#pragma once

#include <QPainter>

class QWidget;

namespace velmo {

/// Paints one control; what is disabled is paler.
class ControlPainter : public QPainter {
public:
    explicit ControlPainter(QWidget& control);

    void fillRounded(const QRectF& area, const QColor& color, qreal radius);
    /// A border inside of the area.
    void strokeRounded(const QRectF& area, const QColor& color, qreal radius, qreal width = 1);
    /// Shown while the control has the keyboard.
    void focusRing(const QRectF& area, qreal radius);
    /// The same around what is filled with the accent colour, in which the ring would not be seen.
    void focusRingOnAccent(const QRectF& area, qreal radius);
    /// A push button's face.
    void face(const QRectF& area, bool isPressed);

private:
    bool showsFocus() const;

    QWidget& control_;
};

}  // namespace velmo
