#pragma once

#include "image.h"
#include "macos/appkit/ns_image.h"

namespace velmo::macos {

/// The image as the system shows it. None where the system has no such symbol, or the bitmap has no pixels.
NSImage imageFrom(const Image& image);

/// As fonts and symbols understand it.
double systemWeight(FontWeight weight);

}  // namespace velmo::macos
