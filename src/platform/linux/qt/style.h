#pragma once

#include "linux/drawing/appearance.h"
#include "text_style.h"

#include <QColor>
#include <QFont>
#include <QPalette>
#include <QString>

/// The one place for how things look, on top of the platform's own style.
namespace velmo::style {

/// The accent colour of the desktop's palette, where the appearance has none.
void setPlatformPalette(const QPalette& palette, const QPalette& usual);
/// Everything below follows from it.
void setAppearance(const Appearance& appearance);
const Appearance& appearance();

/// The user's font.
QFont font();
/// The same in a view.
QFont font(const Font& wanted);
QColor color(const SemanticColor& wanted);
QPalette palette();
QString sheet();

/// Behind everything in an ordinary window.
QColor window();
/// Behind everything in a window that floats, translucent where the screen can show that.
QColor floating();
/// Behind a group of rows.
QColor group();
/// Of a control that is pressed or typed into.
QColor control();
/// Between things.
QColor hairline();
/// Around controls and floating windows.
QColor border();
/// Of a switch that is off and of what is left of a slider's track.
QColor track();

/// Points; measures of the design rather than of one view.
inline constexpr double groupRadius = 8;
inline constexpr double controlRadius = 6;
inline constexpr double floatingRadius = 10;
/// Of what is disabled.
inline constexpr double disabledOpacity = 0.45;
/// Between neighbours in a stack that does not say.
inline constexpr double stackSpacing = 8;

}  // namespace velmo::style
