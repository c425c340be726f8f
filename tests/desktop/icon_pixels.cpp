#include "icon_pixels.h"

#include <algorithm>
#include <cstddef>

namespace velmo::desktop {

std::uint32_t pixelAt(const Bitmap& bitmap, int x, int y) {
    const auto* bytes = bitmap.pixels->data() + static_cast<std::ptrdiff_t>(y * bitmap.width + x) * 4;
    return static_cast<std::uint32_t>(bytes[3]) << 24 | static_cast<std::uint32_t>(bytes[2]) << 16 |
           static_cast<std::uint32_t>(bytes[1]) << 8 | bytes[0];
}

std::uint32_t over(std::uint32_t pixel, std::uint32_t background) {
    std::uint32_t seen = 0;
    for (int shift = 0; shift < 24; shift += 8) {
        const auto part = (pixel >> shift) & 0xff;
        const auto behind = ((background >> shift) & 0xff) * (255 - (pixel >> 24));
        seen |= std::min<std::uint32_t>(part + (behind + 127) / 255, 255) << shift;
    }
    return seen;
}

std::vector<std::uint32_t> pattern(int side, std::uint8_t depth) {
    std::vector<std::uint32_t> pixels;
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            const int alpha = depth < 32 || y < side / 2 ? 255 : 255 - y * 12;
            const auto part = [&](int value) { return static_cast<std::uint32_t>(value * alpha / 255); };
            pixels.push_back(static_cast<std::uint32_t>(alpha) << 24 | part(x * 12) << 16 |
                             part(y * 12) << 8 | part(255 - x * 5 - y * 7));
        }
    }
    return pixels;
}

}  // namespace velmo::desktop
