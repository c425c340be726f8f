#include "qt_menu.h"

#include <QAction>
#include <QGuiApplication>
#include <QMenu>
#include <QScreen>

#include <algorithm>
#include <map>

namespace velmo {

namespace {

/// Ampersands would underline what follows them.
QString plainText(const std::string& text) {
    return QString::fromStdString(text).replace(QLatin1Char('&'), QLatin1String("&&"));
}

/// What follows a tab stands at the right, where shortcuts do.
QString textOf(const MenuItem& item) {
    QString text = plainText(item.title());
    if (!item.keyEquivalent().empty())
        text += QStringLiteral("\t\u2318") + plainText(item.keyEquivalent()).toUpper();
    return text;
}

}  // namespace

QPoint insideScreen(const QMenu& menu, QPoint place) {
    constexpr int margin = 6;
    if (const QScreen* screen = QGuiApplication::screenAt(place))
        place.setX(std::min(place.x(), screen->geometry().right() + 1 - margin - menu.sizeHint().width()));
    return place;
}

void showMenu(const Menu& menu, const QPoint& place) {
    QMenu shown;
    std::map<const QAction*, std::shared_ptr<MenuItem>> items;
    for (const auto& item : menu.items) {
        if (!item) {
            shown.addSeparator();
            continue;
        }
        items[shown.addAction(textOf(*item))] = item;
    }
    const auto chosen = items.find(shown.exec(insideScreen(shown, place)));
    if (chosen != items.end())
        chosen->second->performAction();
}

}  // namespace velmo
