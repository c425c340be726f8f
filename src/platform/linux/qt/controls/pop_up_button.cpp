#include "pop_up_button.h"

#include "linux/qt/controls/painting.h"
#include "linux/qt/style.h"

#include <QWheelEvent>

#include <algorithm>

namespace velmo {

namespace {

constexpr int buttonSidePadding = 10;
constexpr int markRoom = 20;
constexpr int buttonVerticalPadding = 4;

}  // namespace

PopUpButton::PopUpButton(QWidget* parent) : QComboBox(parent) {
    setFocusPolicy(Qt::StrongFocus);
}

QSize PopUpButton::sizeHint() const {
    const QFontMetrics metrics(font());
    int widest = 0;
    for (int index = 0; index < count(); ++index)
        widest = std::max(widest, metrics.horizontalAdvance(itemText(index)));
    return {widest + 2 * buttonSidePadding + markRoom, metrics.height() + 2 * buttonVerticalPadding};
}

void PopUpButton::paintEvent(QPaintEvent* /*event*/) {
    ControlPainter painter(*this);
    painter.face(rect(), false);
    painter.setPen(style::color({}));
    const bool isMirrored = layoutDirection() == Qt::RightToLeft;
    const QRect textArea = isMirrored ? rect().adjusted(markRoom, 0, -buttonSidePadding, 0)
                                      : rect().adjusted(buttonSidePadding, 0, -markRoom, 0);
    painter.drawText(textArea, Qt::AlignVCenter | (isMirrored ? Qt::AlignRight : Qt::AlignLeft),
                     currentText());
    constexpr qreal halfWidth = 3.5;
    constexpr qreal halfHeight = 2;
    const QPointF middle(isMirrored ? markRoom / 2.0 + 2 : width() - markRoom / 2.0 - 2, height() / 2.0);
    const QPolygonF mark = {middle + QPointF(-halfWidth, -halfHeight), middle + QPointF(0, halfHeight),
                            middle + QPointF(halfWidth, -halfHeight)};
    painter.setPen(QPen(style::color({}), 1.4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(mark);
}

void PopUpButton::wheelEvent(QWheelEvent* event) {
    event->ignore();
}

}  // namespace velmo
