#include "background_widget.h"

#include "linux/qt/style.h"

#include <QPainter>

#include <algorithm>

namespace velmo {

BackgroundWidget::BackgroundWidget(QWidget& surface) : QWidget(&surface) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setVisible(true);
}

void BackgroundWidget::display(const Background& background) {
    if (background == background_)
        return;
    background_ = background;
    update();
}

void BackgroundWidget::paintEvent(QPaintEvent* /*event*/) {
    const QColor color = style::color(background_.color);
    if (color.alpha() == 0)
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    if (background_.shape == ShapeKind::circle) {
        const qreal radius = std::min(width(), height()) / 2.0;
        painter.drawEllipse(QRectF(rect()).center(), radius, radius);
    } else {
        painter.drawRoundedRect(rect(), background_.cornerRadius, background_.cornerRadius);
    }
}

}  // namespace velmo
