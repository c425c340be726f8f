// A Qt program with a tray icon, a tooltip and a menu. What happens to it goes, a line each, into the file
// that its argument names. With a second argument, "popup", a click opens the menu, too.

#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QCursor>
#include <QFile>
#include <QMenu>
#include <QPainter>
#include <QPixmap>
#include <QSystemTrayIcon>

namespace {

QIcon sun() {
    QIcon icon;
    for (const int side : {16, 22, 24, 32, 48, 64}) {
        QPixmap pixmap(side, side);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(0xf5, 0x9e, 0x0b));
        painter.drawEllipse(QRectF(0.1 * side, 0.1 * side, 0.8 * side, 0.8 * side));
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

}  // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("qt-tray"));
    QApplication::setQuitOnLastWindowClosed(false);
    const QString file = QApplication::arguments().value(1);
    const auto note = [&](const QString& text) {
        QFile log(file);
        if (log.open(QIODevice::Append))
            log.write((text + QLatin1Char('\n')).toUtf8());
    };

    QMenu menu;
    QObject::connect(menu.addAction(QStringLiteral("&Refresh")), &QAction::triggered,
                     [&] { note(QStringLiteral("refresh")); });
    auto* check = menu.addAction(QStringLiteral("Show &details"));
    check->setCheckable(true);
    check->setChecked(true);
    QObject::connect(check, &QAction::toggled, [&](bool on) {
        note(on ? QStringLiteral("details on") : QStringLiteral("details off"));
    });
    auto* places = menu.addMenu(QStringLiteral("&Place"));
    QActionGroup group(places);
    for (const auto* name : {"Berlin", "Lisbon", "Oslo"}) {
        auto* action = places->addAction(QString::fromLatin1(name));
        action->setCheckable(true);
        group.addAction(action);
        QObject::connect(action, &QAction::triggered, [&note, name] { note(QString::fromLatin1(name)); });
    }
    group.actions().constFirst()->setChecked(true);
    menu.addSeparator();
    menu.addAction(QStringLiteral("Unavailable"))->setEnabled(false);
    auto* quit = menu.addAction(QStringLiteral("&Quit"), &application, [] { QApplication::quit(); });
    quit->setShortcut(QKeySequence(QStringLiteral("Ctrl+Q")));

    QSystemTrayIcon icon(sun());
    icon.setToolTip(QStringLiteral("Sunny, 21 degrees"));
    icon.setContextMenu(&menu);
    QObject::connect(&icon, &QSystemTrayIcon::activated, [&](QSystemTrayIcon::ActivationReason reason) {
        if (reason == QSystemTrayIcon::Trigger) {
            note(QStringLiteral("activated"));
            if (QApplication::arguments().value(2) == QStringLiteral("popup"))
                menu.popup(QCursor::pos());
        } else if (reason == QSystemTrayIcon::MiddleClick) {
            note(QStringLiteral("middle"));
        }
    });
    icon.show();
    return QApplication::exec();
}
