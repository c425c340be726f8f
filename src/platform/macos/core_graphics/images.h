#pragma once

#include "cg_rect.h"
#include "macos/objc/function.h"

#include <cstdint>

namespace velmo::macos {

enum class CGImageAlphaInfo : std::uint32_t { premultipliedFirst = 2 };
enum class CGBitmapInfo : std::uint32_t {
    byteOrder32Little = 2 << 12,
    /// Premultiplied, and first in a number of 32 bits whose lowest byte comes first: blue, green, red,
    /// alpha.
    bgra = static_cast<std::uint32_t>(CGImageAlphaInfo::premultipliedFirst) | byteOrder32Little,
};

template <>
inline constexpr std::string_view frameworkName<CGBitmapInfo> = "CGBitmapInfo";

namespace core_graphics {

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

inline constexpr Function<"CGImageGetWidth", &CGImageGetWidth> imageWidth;
inline constexpr Function<"CGImageGetHeight", &CGImageGetHeight> imageHeight;
inline constexpr Function<"CGColorSpaceCreateDeviceRGB", &CGColorSpaceCreateDeviceRGB> createDeviceRGB;
inline constexpr Function<"CGBitmapContextCreate", &CGBitmapContextCreate> createBitmapContext;
/// None for no context.
inline constexpr Function<"CGBitmapContextCreateImage", &CGBitmapContextCreateImage> createImage;
inline constexpr Function<"CGContextDrawImage", &CGContextDrawImage> drawImage;

}  // namespace core_graphics
}  // namespace velmo::macos
