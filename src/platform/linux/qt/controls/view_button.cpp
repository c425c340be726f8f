#include "view_button.h"

#include "linux/qt/controls/painting.h"
#include "linux/qt/style.h"

#include <QEvent>

namespace velmo {

ViewButton::ViewButton(QWidget& surface) : QAbstractButton(&surface) {
    setFocusPolicy(Qt::TabFocus);
}

void ViewButton::setStyle(ButtonStyle style) {
    style_ = style;
    update();
}

bool ViewButton::event(QEvent* event) {
    // At once: while a press by a shortcut is animated, another one would be lost.
    if (event->type() == QEvent::Shortcut) {
        click();
        return true;
    }
    return QAbstractButton::event(event);
}

void ViewButton::paintEvent(QPaintEvent* /*event*/) {
    ControlPainter painter(*this);
    if (style_ == ButtonStyle::automatic) {
        painter.face(rect(), isDown());
        return;
    }
    if (style_ == ButtonStyle::borderless && isDown())
        painter.fillRounded(rect(), style::color({ColorRole::primary, 0.1}), style::controlRadius);
    painter.focusRing(rect(), style::controlRadius);
}

}  // namespace velmo
