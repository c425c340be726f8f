#include "qt_window.h"

#include "linux/qt/pixels.h"
#include "linux/qt/style.h"
#include "linux/qt/views/view_host.h"
#include "linux/qt/windows/await_server.h"
#include "linux/qt/windows/release_picture.h"
#include "linux/qt/windows/scale_follower.h"
#include "linux/qt/windows/screen_changes.h"

#include <QAccessible>
#include <QApplication>
#include <QCloseEvent>
#include <QGuiApplication>
#include <QPainter>
#include <QScreen>
#include <QTimer>

#include <algorithm>
#include <cmath>
#include <utility>

namespace velmo {

namespace {

constexpr int restingMilliseconds = 300;
/// Points of the title that are enough to see it and to drag it back.
constexpr int leastTitle = 50;
/// Points by which a window manager may put a window elsewhere, for its frame or for a strip at an edge.
constexpr int usualShift = 64;
/// After others have come or gone; who moves it then is not the user.
constexpr int settlingMilliseconds = 1000;

/// In the toolkit's units, so that another scale makes them others.
QList<QRect> screenGeometries() {
    QList<QRect> geometries;
    for (const auto* screen : QGuiApplication::screens())
        geometries.append(screen->geometry());
    return geometries;
}

/// One that goes and comes again is listed elsewhere.
bool areSame(const QList<QRect>& screens, const QList<QRect>& others) {
    return std::is_permutation(screens.begin(), screens.end(), others.begin(), others.end());
}

}  // namespace

class QtWindow::Widget : public QWidget {
public:
    explicit Widget(QtWindow& owner) : owner_(owner), host_(owner.host_.loop(), this) {
        setAttribute(Qt::WA_QuitOnClose, false);
        setAttribute(Qt::WA_AlwaysShowToolTips);
        setProperty("accessibleRole", QAccessible::Window);
        resting_.setSingleShot(true);
        resting_.setInterval(restingMilliseconds);
        QObject::connect(&resting_, &QTimer::timeout, this, [this] { owner_.rememberPlace(); });
    }

    void rememberPlaceNow() {
        if (!resting_.isActive())
            return;
        resting_.stop();
        owner_.rememberPlace();
    }
    void setContent(const View& content) {
        host_.setContent(content);
        setFixedSize(fittingSize());
    }
    void followScale() {
        const QSize size = fittingSize();
        const qreal factor = scale_.resize(*this, [&](int more) { setFixedSize(size + QSize(more, more)); });
        owner_.screensChanged(factor);
    }

protected:
    void paintEvent(QPaintEvent* /*event*/) override { QPainter(this).fillRect(rect(), style::window()); }
    void resizeEvent(QResizeEvent* /*event*/) override { host_.setGeometry(rect()); }
    void showEvent(QShowEvent* event) override {
        QWidget::showEvent(event);
        takeKeyboardBack();
        if (owner_.unmovedPlace_ && !owner_.isPlaced_)
            resting_.start();
    }
    void hideEvent(QHideEvent* event) override {
        QWidget::hideEvent(event);
        // One that is only minimized may be shown without being drawn.
        if (!event->spontaneous())
            releasePicture(*this);
    }
    void moveEvent(QMoveEvent* event) override {
        QWidget::moveEvent(event);
        // Once it rests: a drag comes here many times, and each time would be a write to the disk.
        if (isVisible())
            resting_.start();
    }
    void closeEvent(QCloseEvent* event) override {
        rememberPlaceNow();
        // Hidden, not closed: it is shown again as the same window.
        event->ignore();
        hide();
        // Later, as the owner may end the window, and unless it was opened once more by then.
        QMetaObject::invokeMethod(
            this,
            [this] {
                const auto handler = owner_.onClose_;
                if (handler && !isVisible())
                    handler();
            },
            Qt::QueuedConnection);
    }

private:
    /// Qt notices late that a window that was hidden has lost the keyboard: shown again by then it would have
    /// it, and its controls would not.
    void takeKeyboardBack() {
        if (QGuiApplication::focusWindow() == windowHandle() && !isActiveWindow())
            QApplication::setActiveWindow(this);
    }
    QSize fittingSize() const {
        const QSizeF size = host_.fittingSize();
        return {static_cast<int>(std::ceil(size.width())), static_cast<int>(std::ceil(size.height()))};
    }

    QtWindow& owner_;
    ViewHost host_;
    ScaleFollower scale_{devicePixelRatioF()};
    ScreenChanges screenChanges_{[this] { followScale(); }};
    QTimer resting_;
};

QtWindow::QtWindow(ToolkitHost& host, const View& content)
    : host_(host), widget_(std::make_unique<Widget>(*this)) {
    widget_->setContent(content);
}

QtWindow::~QtWindow() {
    widget_->rememberPlaceNow();
}

void QtWindow::setContent(const View& content) {
    widget_->setContent(content);
}

void QtWindow::setTitle(const std::string& title) {
    widget_->setWindowTitle(QString::fromStdString(title));
}

void QtWindow::setStyleMask(std::uint64_t mask) {
    Qt::WindowFlags flags = Qt::Window | Qt::CustomizeWindowHint;
    if (mask & window_style::titled)
        flags |= Qt::WindowTitleHint | Qt::WindowSystemMenuHint;
    if (mask & window_style::closable)
        flags |= Qt::WindowCloseButtonHint;
    if (mask & window_style::miniaturizable)
        flags |= Qt::WindowMinimizeButtonHint;
    widget_->setWindowFlags(flags);
}

void QtWindow::center() {
    if (const auto* screen = QGuiApplication::primaryScreen()) {
        const QRect area = screen->availableGeometry();
        unmovedPlace_ = area.center() - QPoint(widget_->width() / 2, widget_->height() / 2);
        isPlaced_ = false;
        widget_->move(*unmovedPlace_);
    }
}

/// What nobody has moved is not moved by that either. What the user has moved waits for when it is opened: a
/// monitor may be away for a moment. If it is open elsewhere meanwhile, it follows.
void QtWindow::screensChanged(double factor) {
    sinceScreensChanged_.start();
    if (!unmovedPlace_)
        return;
    if (!widget_->isVisible()) {
        center();
    } else if (chosenPlace_) {
        restorePlace();
    } else if (factor != 1) {
        const QPointF corner = widget_->screen()->geometry().topLeft();
        unmovedPlace_ = (corner + (*unmovedPlace_ - corner) * factor).toPoint();
        // To the pixel, the window manager says where that is.
        isPlaced_ = false;
    }
}

QPoint QtWindow::nearestIn(const QRect& area, const QPoint& corner) const {
    const QSize size = widget_->frameGeometry().size();
    const QPoint farthest = area.bottomRight() + QPoint(1, 1) - QPoint(size.width(), size.height());
    return {std::max(std::min(corner.x(), farthest.x()), area.x()),
            std::max(std::min(corner.y(), farthest.y()), area.y())};
}

const QScreen* QtWindow::screenAt(const QPoint& corner) const {
    const QRect topEdge(corner, QSize(widget_->width(), 1));
    const auto screens = QGuiApplication::screens();
    const auto found = std::find_if(screens.begin(), screens.end(), [&](const QScreen* screen) {
        return screen->geometry().intersected(topEdge).width() >= leastTitle;
    });
    return found == screens.end() ? nullptr : *found;
}

/// Where the user has put it, partly beyond an edge, too, as long as the screens are those of then. On others
/// it is wholly seen, and the user's place stays what it was.
void QtWindow::restorePlace() {
    const bool areScreensOthers = chosenPlace_ && !areSame(screenGeometries(), chosenScreens_);
    const bool isThere = !chosenPlace_ || (!areScreensOthers && pixel(widget_->pos()) == *chosenPlace_);
    const QPoint chosen = isThere ? widget_->pos() : placeOf(*chosenPlace_);
    const auto* screen = screenAt(chosen);
    if (!screen && !areScreensOthers) {
        center();
        return;
    }
    if (isThere)
        return;
    const QRect area = (screen ? screen : widget_->screen())->availableGeometry();
    const QPoint place = areScreensOthers ? nearestIn(area, chosen) : chosen;
    widget_->move(place);
    unmovedPlace_.reset();
    if (areScreensOthers) {
        unmovedPlace_ = place;
        isPlaced_ = false;
    }
}

/// The toolkit reckons from the corner of the screen that has the window's middle, though the window's own
/// corner may lie on another one.
QPoint QtWindow::pixel(const QPoint& corner) const {
    return toPixels(corner, *widget_->screen()).toPoint();
}

QPoint QtWindow::placeOf(const QPoint& pixel) const {
    const auto* screen =
        screenWithPixel(pixel + QPointF(widget_->width() * widget_->devicePixelRatioF() / 2, 0));
    return (screen ? fromPixels(pixel, *screen) : fromPixels(pixel)).toPoint();
}

void QtWindow::setFrameAutosaveName(const std::string& name) {
    autosaveName_ = name;
    if (const auto place = host_.rememberedPlace(name)) {
        chosenPlace_ = QPointF(place->x, place->y).toPoint();
        chosenScreens_ = screenGeometries();
    }
}

/// Only the user's choice is worth remembering: the middle is elsewhere on another screen.
void QtWindow::rememberPlace() {
    if (autosaveName_.empty())
        return;
    const QPoint place = widget_->pos();
    const bool wasPlaced = std::exchange(isPlaced_, true);
    const bool isShifted =
        !wasPlaced && unmovedPlace_ && (place - *unmovedPlace_).manhattanLength() <= usualShift;
    // A window manager brings it to a screen that is there.
    const bool isBrought =
        sinceScreensChanged_.isValid() && !sinceScreensChanged_.hasExpired(settlingMilliseconds);
    if (isShifted || isBrought)
        unmovedPlace_ = place;
    if (place == unmovedPlace_)
        return;
    unmovedPlace_.reset();
    chosenPlace_ = pixel(place);
    chosenScreens_ = screenGeometries();
    const QPointF remembered = *chosenPlace_;
    host_.rememberPlace(autosaveName_, {remembered.x(), remembered.y()});
}

void QtWindow::makeKeyAndOrderFront() {
    // Asked to show what lies on another workspace, a window manager may take the user there.
    if (widget_->isVisible())
        host_.bringToWorkspace(static_cast<WindowNumber>(widget_->winId()));
    if (!widget_->isVisible() || !screenAt(widget_->pos()))
        restorePlace();
    widget_->setWindowState(widget_->windowState() & ~Qt::WindowMinimized);
    widget_->show();
    widget_->raise();
    // The window manager has to know the window before it is asked to bring it to the front.
    awaitServer();
    host_.activate(static_cast<WindowNumber>(widget_->winId()));
}

bool QtWindow::isVisible() const {
    return widget_->isVisible();
}

}  // namespace velmo
