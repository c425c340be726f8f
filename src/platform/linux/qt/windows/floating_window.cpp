#include "floating_window.h"

#include "linux/qt/controls/painting.h"
#include "linux/qt/pixels.h"
#include "linux/qt/style.h"

#include <QWindow>

#include <cmath>

namespace velmo {

FloatingWindow::FloatingWindow(ToolkitHost& host, bool takesKeyboard)
    : host_(host), content_(host.loop(), this) {
    Qt::WindowFlags flags =
        Qt::Tool | Qt::FramelessWindowHint | Qt::BypassWindowManagerHint | Qt::WindowStaysOnTopHint;
    if (!takesKeyboard)
        flags |= Qt::WindowDoesNotAcceptFocus;
    setWindowFlags(flags);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_AlwaysShowToolTips);
    setAttribute(Qt::WA_X11NetWmWindowTypeDropDownMenu);
    setAttribute(Qt::WA_QuitOnClose, false);
}

QSize FloatingWindow::contentSize() const {
    const QSizeF size = content_.fittingSize();
    return {static_cast<int>(std::ceil(size.width())), static_cast<int>(std::ceil(size.height()))};
}

Size FloatingWindow::fittingSize() const {
    // Qt's units and ours differ where a desktop scales windows by other means than the resolution.
    const qreal factor = devicePixelRatioF() / style::appearance().scale;
    return {contentSize().width() * factor, contentSize().height() * factor};
}

/// A window's depth stays what it was made with.
void FloatingWindow::matchScreen() {
    if (isTranslucent_ == host_.isComposited())
        return;
    isTranslucent_ = !isTranslucent_;
    hide();
    destroy();
    setAttribute(Qt::WA_TranslucentBackground, isTranslucent_);
    create();
}

WindowNumber FloatingWindow::number() const {
    // Asked of the window itself, not of the widget: that one remembers the number of a window that was made
    // anew.
    const auto* window = windowHandle();
    return window ? static_cast<WindowNumber>(window->winId()) : 0;
}

void FloatingWindow::showAt(const QPointF& pixel) {
    matchScreen();
    setGeometry({fromPixels(pixel).toPoint(), contentSize()});
    show();
    raise();
}

void FloatingWindow::paintEvent(QPaintEvent* /*event*/) {
    constexpr float opacity = 0.94F;
    QColor background = style::floating();
    if (isTranslucent_)
        background.setAlphaF(opacity);
    const qreal radius = isTranslucent_ ? style::floatingRadius : 0;
    ControlPainter painter(*this);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.fillRounded(rect(), background, radius);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter.strokeRounded(rect(), style::border(), radius);
}

void FloatingWindow::resizeEvent(QResizeEvent* /*event*/) {
    content_.setGeometry(rect());
}

}  // namespace velmo
