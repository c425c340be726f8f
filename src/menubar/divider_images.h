#pragma once

#include "platform/image.h"

namespace velmo {

Image dividerImage();
Image alwaysHiddenDividerImage();

}  // namespace velmo
