#pragma once

#include "image.h"

#include <cstdint>
#include <vector>

namespace velmo::desktop {

// Pixels are 0xAARRGGBB, premultiplied.

std::uint32_t pixelAt(const Bitmap& bitmap, int x, int y);
/// What is seen of a pixel before a background.
std::uint32_t over(std::uint32_t pixel, std::uint32_t background);
/// Another colour at every pixel of a square; where there is alpha, the lower half has less and less.
std::vector<std::uint32_t> pattern(int side, std::uint8_t depth);

}  // namespace velmo::desktop
