#include "switch_control.h"

#include "linux/qt/controls/painting.h"
#include "linux/qt/style.h"

namespace velmo {

namespace {

constexpr QSize switchExtent(34, 20);
constexpr int knobInset = 2;

}  // namespace

SwitchControl::SwitchControl(QWidget* parent) : QCheckBox(parent) {
    setFocusPolicy(Qt::StrongFocus);
}

QSize SwitchControl::sizeHint() const {
    return switchExtent;
}

bool SwitchControl::hitButton(const QPoint& position) const {
    return rect().contains(position);
}

void SwitchControl::paintEvent(QPaintEvent* /*event*/) {
    ControlPainter painter(*this);
    const QRectF area(QPointF(0, 0), QSizeF(switchExtent));
    painter.fillRounded(area, isChecked() ? style::color({ColorRole::accent}) : style::track(),
                        area.height() / 2);
    const qreal side = area.height() - 2 * knobInset;
    const QRectF knob(isChecked() ? area.width() - knobInset - side : knobInset, knobInset, side, side);
    painter.fillRounded(knob, Qt::white, side / 2);
    if (isChecked())
        painter.focusRingOnAccent(area, area.height() / 2);
    else
        painter.focusRing(area, area.height() / 2);
}

}  // namespace velmo
