#pragma once

#include "image.h"

#include <cairo.h>

#include <string>

namespace velmo {

/// True where there is a drawing for the symbol of this name.
bool isKnownSymbol(const std::string& name);

/// Side, in points, of the square that a symbol fills.
double symbolSide(const Symbol& symbol);

/// Draws a symbol in the current source colour into the square from (0, 0) to its side, y downward.
/// An unknown name draws nothing.
void drawSymbol(cairo_t* context, const Symbol& symbol);

}  // namespace velmo
