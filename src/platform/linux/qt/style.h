#pragma once

#include "linux/drawing/appearance.h"

#include <QFont>
#include <QPalette>
#include <QString>

namespace velmo::style {

/// The one place for how things look, on top of the platform's own style.
QFont font(const Appearance& appearance);
QPalette palette(const Appearance& appearance);
QString sheet(const Appearance& appearance);

}  // namespace velmo::style
