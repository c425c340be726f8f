#include "floating_window.h"

#include "hanging_frame.h"
#include "linux/qt/controls/painting.h"
#include "linux/qt/pixels.h"
#include "linux/qt/windows/await_server.h"
#include "linux/qt/windows/release_picture.h"

#include <QAccessible>
#include <QScrollBar>
#include <QWindow>

#include <algorithm>
#include <cmath>
#include <utility>

namespace velmo {

namespace {

/// Points: how far the shadow lies below what throws it, and where it ends.
constexpr int shadowDrop = 4;
constexpr int shadowReach = 12;
constexpr qreal shadowOpacity = 0.3;

}  // namespace

FloatingWindow::FloatingWindow(ToolkitHost& host, const Traits& traits)
    : host_(host), traits_(traits), content_(host.loop(), this), screenChanges_([this] { followBar(); }) {
    if (traits.isRow)
        scroller_.emplace(*this, content_);
    Qt::WindowFlags flags =
        Qt::Tool | Qt::FramelessWindowHint | Qt::BypassWindowManagerHint | Qt::WindowStaysOnTopHint;
    if (!traits.takesKeyboard)
        flags |= Qt::WindowDoesNotAcceptFocus;
    setWindowFlags(flags);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_AlwaysShowToolTips);
    setAttribute(Qt::WA_X11NetWmWindowTypeDropDownMenu);
    setAttribute(Qt::WA_QuitOnClose, false);
    setProperty("accessibleRole", QAccessible::Window);
    compositingChanges_ = host.onCompositingChange([this] {
        if (isVisible())
            showAt(corner_);
    });
    barChanges_ = host.onBarChange([this] { followBar(); });
    barLeaves_ = host.onBarLeave([this] { leave(); });
}

void FloatingWindow::followBar() {
    if (isVisible() && onBarChange_)
        onBarChange_();
}

void FloatingWindow::leave() const {
    if (!isVisible())
        return;
    // A copy: the owner may end the window.
    if (const auto handler = onLeave_)
        handler();
}

QSize FloatingWindow::contentSize() const {
    const QSizeF size = content_.fittingSize();
    return {static_cast<int>(std::ceil(size.width())), static_cast<int>(std::ceil(size.height()))};
}

/// Qt's units and ours differ where a desktop scales windows by other means than the resolution.
qreal FloatingWindow::pointsPerUnit() const {
    return devicePixelRatioF() / style::appearance().scale;
}

QSize FloatingWindow::bodySize() const {
    if (!scroller_)
        return contentSize();
    const Point end = host_.barEnd();
    const double room = host_.visibleFrame({end.x - 1, end.y - 1}).width - 2 * hangingEdgeGap;
    return scroller_->sizeFor(contentSize(), static_cast<int>(room / pointsPerUnit()));
}

Size FloatingWindow::fittingSize() const {
    const QSize size = bodySize();
    return {size.width() * pointsPerUnit(), size.height() * pointsPerUnit()};
}

void FloatingWindow::scrollToBegin() {
    if (scroller_)
        scroller_->horizontalScrollBar()->setValue(0);
}

void FloatingWindow::placeContent() {
    if (scroller_) {
        scroller_->setGeometry(body());
        content_.resize(contentSize());
    } else {
        content_.setGeometry(body());
    }
}

/// A window's depth stays what it was made with.
bool FloatingWindow::matchScreen() {
    if (isTranslucent_ == host_.isComposited())
        return false;
    isTranslucent_ = !isTranslucent_;
    hide();
    destroy();
    setAttribute(Qt::WA_TranslucentBackground, isTranslucent_);
    create();
    return true;
}

int FloatingWindow::shadowMargin() const {
    return isTranslucent_ && traits_.hasShadow ? shadowDrop + shadowReach : 0;
}

QRect FloatingWindow::body() const {
    const int margin = shadowMargin();
    return rect().adjusted(margin, margin, -margin, -margin);
}

WindowNumber FloatingWindow::number() const {
    // Asked of the window itself, not of the widget: that one remembers the number of a window that was made
    // anew.
    const auto* window = windowHandle();
    return window ? static_cast<WindowNumber>(window->winId()) : 0;
}

void FloatingWindow::showAt(const QPointF& pixel) {
    corner_ = pixel;
    // The toolkit may not have heard of it yet.
    const bool hadKeyboard = isVisible() && host_.hasKeyboard(number());
    const bool isAnother = matchScreen();
    const int margin = shadowMargin();
    const QRect place =
        QRect(fromPixels(pixel).toPoint(), bodySize()).adjusted(-margin, -margin, margin, margin);
    scale_.resize(*this, [&](int more) { setGeometry(place.adjusted(0, 0, more, more)); });
    placeContent();
    declareShadow();
    show();
    raise();
    above_ = host_.keepAbove(number());
    if (isAnother && hadKeyboard) {
        // Only a window that is on the screen can have the keyboard.
        awaitServer();
        host_.takeKeyboard(number());
    }
}

/// Before the window is seen, lest a compositing manager gives it a shadow of its own for a moment.
void FloatingWindow::declareShadow() {
    if (!isTranslucent_)
        return;
    awaitServer();
    const int margin = shadowMargin();
    const qreal ratio = devicePixelRatioF();
    host_.declareShadow(number(), {width() * ratio, height() * ratio}, margin * ratio);
}

/// Rings that come nearer, each over the one before, darker towards the middle.
void FloatingWindow::paintShadow(QPainter& painter, qreal radius) const {
    painter.setPen(Qt::NoPen);
    const QRectF caster = QRectF(body()).translated(0, shadowDrop);
    // As far inwards as the drop lets it be seen.
    for (int step = 0; step <= 2 * (shadowReach + shadowDrop); ++step) {
        const qreal distance = shadowReach - step / 2.0;
        const qreal nearness = (shadowReach - distance) / (shadowReach + shadowDrop);
        const qreal ringRadius = std::max(radius + distance, 0.0);
        painter.setBrush(QColor::fromRgbF(0, 0, 0, static_cast<float>(shadowOpacity * nearness * nearness)));
        painter.drawRoundedRect(caster.adjusted(-distance, -distance, distance, distance), ringRadius,
                                ringRadius);
    }
}

void FloatingWindow::paintEvent(QPaintEvent* /*event*/) {
    constexpr float opacity = 0.94F;
    QColor background = style::floating();
    if (isTranslucent_)
        background.setAlphaF(opacity);
    const qreal radius = isTranslucent_ ? traits_.cornerRadius : 0;
    ControlPainter painter(*this);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    if (shadowMargin() > 0)
        paintShadow(painter, radius);
    painter.fillRounded(body(), background, radius);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter.strokeRounded(body(), style::border(), radius);
}

void FloatingWindow::resizeEvent(QResizeEvent* /*event*/) {
    placeContent();
}

void FloatingWindow::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    above_ = {};
    releasePicture(*this);
}

void FloatingWindow::closeEvent(QCloseEvent* /*event*/) {
    leave();
}

}  // namespace velmo
