#include "radio_option.h"

#include "linux/qt/controls/painting.h"
#include "linux/qt/style.h"

namespace velmo {

RadioOption::RadioOption(QWidget* parent) : QRadioButton(parent) {
    setFocusPolicy(Qt::StrongFocus);
}

QSize RadioOption::sizeHint() const {
    return {markSide, markSide};
}

void RadioOption::setMarkTop(qreal top) {
    markTop_ = top;
    update();
}

bool RadioOption::hitButton(const QPoint& position) const {
    return rect().contains(position);
}

void RadioOption::paintEvent(QPaintEvent* /*event*/) {
    constexpr qreal dotSide = 6;
    ControlPainter painter(*this);
    const qreal left = layoutDirection() == Qt::RightToLeft ? width() - markSide : 0;
    const QRectF mark(left, markTop_, markSide, markSide);
    if (isChecked()) {
        painter.fillRounded(mark, style::color({ColorRole::accent}), markSide / 2.0);
        const QPointF middle = mark.center();
        painter.fillRounded({middle.x() - dotSide / 2, middle.y() - dotSide / 2, dotSide, dotSide}, Qt::white,
                            dotSide / 2);
    } else {
        painter.fillRounded(mark, style::control(), markSide / 2.0);
        painter.strokeRounded(mark, style::border(), markSide / 2.0);
    }
    if (isChecked())
        painter.focusRingOnAccent(mark, markSide / 2.0);
    else
        painter.focusRing(mark, markSide / 2.0);
}

}  // namespace velmo
