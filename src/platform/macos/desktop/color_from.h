#pragma once

#include "macos/appkit/ns_color.h"
#include "text_style.h"

namespace velmo::macos {

/// The system's colour for that meaning, without the opacity: it follows light and dark by itself.
NSColor colorFrom(ColorRole role);

}  // namespace velmo::macos
