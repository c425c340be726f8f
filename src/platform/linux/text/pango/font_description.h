#pragma once

#include "linux/drawing/appearance.h"
#include "linux/text/pango/glib_pointers.h"
#include "text_style.h"

namespace velmo {

/// The user's font as the text style varies it, with its size in pixels.
FontDescriptionPointer fontDescription(const Font& font, const Appearance& appearance);

}  // namespace velmo
