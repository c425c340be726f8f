#pragma once

#include "menu.h"

#include <QPoint>

namespace velmo {

/// Shows a menu at a place of the screen, in Qt's coordinates, until it closes; then performs the chosen
/// item.
void showMenu(const Menu& menu, const QPoint& place);

}  // namespace velmo
