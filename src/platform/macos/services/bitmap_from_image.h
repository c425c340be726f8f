#pragma once

#include "image.h"
#include "macos/objc/object.h"

#include <optional>

namespace velmo::macos {

/// The pixels of a CGImage; its size in points is left open. Absent where there is no image, or an empty one.
/// On any thread.
std::optional<Bitmap> bitmapFrom(const Object& image);

}  // namespace velmo::macos
