#pragma once

#include <QSlider>

namespace velmo {

/// A slider whose knob rests on whole steps.
class SliderControl : public QSlider {
public:
    explicit SliderControl(QWidget* parent);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    /// Not by an accidental turn of the wheel: the form around it scrolls.
    void wheelEvent(QWheelEvent* event) override;

private:
    qreal knobCenter() const;
    void follow(qreal x);
};

}  // namespace velmo
