#include "linux/toolkit/toolkit.h"

#include "linux/qt/qt_loop.h"
#include "linux/qt/qt_menu.h"
#include "linux/qt/style.h"

#include <QApplication>
#include <QScreen>
#include <QTextDocument>
#include <QToolTip>
#include <QWidget>

#include <cmath>

namespace velmo {

namespace {

/// Qt keeps references to these for as long as it runs.
struct Arguments {
    int count = 1;
    char name[6] = "velmo";
    char* values[2] = {name, nullptr};
};

/// Screens keep their places in pixels; what lies on them is scaled.
QPoint fromPixels(int x, int y) {
    const QPoint pixel(x, y);
    for (const auto* screen : QGuiApplication::screens()) {
        const qreal ratio = screen->devicePixelRatio();
        const QRect scaled = screen->geometry();
        const QRect pixels(scaled.topLeft(), (QSizeF(scaled.size()) * ratio).toSize());
        if (pixels.contains(pixel))
            return scaled.topLeft() + ((QPointF(pixel - scaled.topLeft())) / ratio).toPoint();
    }
    return pixel;
}

class QtToolkit : public Toolkit {
public:
    explicit QtToolkit(HostedLoop& hosted)
        : application_(arguments_.count, arguments_.values), loop_(hosted) {
        QApplication::setQuitOnLastWindowClosed(false);
        QApplication::setApplicationName(QStringLiteral("velmo"));
        QApplication::setApplicationDisplayName(QStringLiteral("Velmo"));
    }

    void runWhile(const std::function<bool()>& condition) override { loop_.runWhile(condition); }

    void interrupt() override {
        QWidget* closed = nullptr;
        for (auto* menu = QApplication::activePopupWidget(); menu && menu != closed;
             menu = QApplication::activePopupWidget()) {
            closed = menu;
            menu->close();
        }
    }

    void setAppearance(const Appearance& appearance) override {
        QApplication::setFont(style::font(appearance));
        QApplication::setPalette(style::palette(appearance));
        application_.setStyleSheet(style::sheet(appearance));
    }

    void popUp(const Menu& menu, int x, int y) override { showMenu(menu, fromPixels(x, y)); }

    void showToolTip(const std::string& text, int x, int y) override {
        const QString plain = QString::fromStdString(text);
        QToolTip::showText(fromPixels(x, y), Qt::mightBeRichText(plain) ? plain.toHtmlEscaped() : plain);
    }

    void hideToolTip() override { QToolTip::hideText(); }

private:
    Arguments arguments_;
    QApplication application_;
    QtLoop loop_;
};

}  // namespace

}  // namespace velmo

extern "C" __attribute__((visibility("default"))) velmo::Toolkit* velmoMakeToolkit(
    velmo::HostedLoop* hosted) {
    // The bar is an X client; so is everything beside it, also where Wayland runs as well.
    qputenv("QT_QPA_PLATFORM", "xcb");
    // The program is silent, and so is what it loads.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    return new velmo::QtToolkit(*hosted);
}
