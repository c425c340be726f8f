#pragma once

#include "macos/appkit/ns_font.h"
#include "text_style.h"

namespace velmo::macos {

NSFont fontFrom(const Font& font);

}  // namespace velmo::macos
