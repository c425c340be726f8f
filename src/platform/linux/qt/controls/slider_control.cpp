#include "slider_control.h"

#include "linux/qt/controls/painting.h"
#include "linux/qt/style.h"

#include <QMouseEvent>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace velmo {

namespace {

constexpr QSize sliderExtent(190, 20);
constexpr qreal knobSide = 16;
constexpr qreal trackHeight = 4;

}  // namespace

SliderControl::SliderControl(QWidget* parent) : QSlider(Qt::Horizontal, parent) {
    setFocusPolicy(Qt::StrongFocus);
}

QSize SliderControl::sizeHint() const {
    return sliderExtent;
}

qreal SliderControl::knobCenter() const {
    const qreal room = width() - knobSide;
    const qreal part = maximum() > minimum() ? qreal(value() - minimum()) / (maximum() - minimum()) : 0;
    return knobSide / 2 + room * (layoutDirection() == Qt::RightToLeft ? 1 - part : part);
}

void SliderControl::paintEvent(QPaintEvent* /*event*/) {
    ControlPainter painter(*this);
    const QRectF track(0, (height() - trackHeight) / 2, width(), trackHeight);
    painter.fillRounded(track, style::track(), trackHeight / 2);
    QRectF filled = track;
    if (layoutDirection() == Qt::RightToLeft)
        filled.setLeft(knobCenter());
    else
        filled.setRight(knobCenter());
    painter.fillRounded(filled, style::color({ColorRole::accent}), trackHeight / 2);
    const QRectF knob(knobCenter() - knobSide / 2, (height() - knobSide) / 2, knobSide, knobSide);
    painter.fillRounded(knob, Qt::white, knobSide / 2);
    painter.strokeRounded(knob, QColor(0, 0, 0, 60), knobSide / 2);
    painter.focusRing(knob.adjusted(-2, -2, 2, 2), knobSide / 2 + 2);
}

void SliderControl::follow(qreal x) {
    const qreal room = std::max(width() - knobSide, 1.0);
    qreal part = std::clamp((x - knobSide / 2) / room, 0.0, 1.0);
    if (layoutDirection() == Qt::RightToLeft)
        part = 1 - part;
    setValue(minimum() + static_cast<int>(std::lround(part * (maximum() - minimum()))));
}

void SliderControl::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    setSliderDown(true);
    follow(event->position().x());
}

void SliderControl::mouseMoveEvent(QMouseEvent* event) {
    if (isSliderDown())
        follow(event->position().x());
}

void SliderControl::mouseReleaseEvent(QMouseEvent* /*event*/) {
    setSliderDown(false);
}

void SliderControl::wheelEvent(QWheelEvent* event) {
    event->ignore();
}

}  // namespace velmo
