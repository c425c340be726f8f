#pragma once

#include "menu.h"

#include <QMenu>
#include <QPoint>

namespace velmo {

/// The place for the menu, moved off the right edge of the screen, where it would else stick.
QPoint insideScreen(const QMenu& menu, QPoint place);

/// Shows a menu at a place of the screen, in Qt's coordinates, until it closes; then performs the chosen
/// item.
void showMenu(const Menu& menu, const QPoint& place);

}  // namespace velmo
