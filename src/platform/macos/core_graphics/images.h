#pragma once

#include "cg_rect.h"
#include "macos/objc/function.h"

#include <cstdint>

namespace velmo::macos {

enum class CGImageAlphaInfo : std::uint32_t { premultipliedFirst = 2 };
enum class CGBitmapInfo : std::uint32_t { byteOrder32Little = 2 << 12 };

template <>
inline constexpr std::string_view frameworkName<CGBitmapInfo> = "CGBitmapInfo";

namespace core_graphics {

/// Premultiplied, and first in a number of 32 bits whose lowest byte comes first: blue, green, red, alpha.
inline constexpr CGBitmapInfo bgra{static_cast<std::uint32_t>(CGImageAlphaInfo::premultipliedFirst) |
                                   static_cast<std::uint32_t>(CGBitmapInfo::byteOrder32Little)};

extern "C" {
std::uint64_t CGImageGetWidth(Id image);
std::uint64_t CGImageGetHeight(Id image);
Id CGColorSpaceCreateDeviceRGB();
Id CGBitmapContextCreate(void* pixels, std::uint64_t width, std::uint64_t height,
                         std::uint64_t bitsPerComponent, std::uint64_t bytesPerRow, Id colorSpace,
                         CGBitmapInfo info);
Id CGBitmapContextCreateImage(Id context);
void CGContextDrawImage(Id context, CGRect rect, Id image);
}

inline constexpr Function<&CGImageGetWidth> imageWidth;
inline constexpr Function<&CGImageGetHeight> imageHeight;
inline constexpr Function<&CGColorSpaceCreateDeviceRGB> createDeviceRGB;
inline constexpr Function<&CGBitmapContextCreate> createBitmapContext;
/// None for no context.
inline constexpr Function<&CGBitmapContextCreateImage> createImage;
inline constexpr Function<&CGContextDrawImage> drawImage;

}  // namespace core_graphics
}  // namespace velmo::macos
