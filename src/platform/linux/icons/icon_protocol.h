#pragma once

#include <cstdint>

/// What the bar and the icon loader say to each other. Both run on the same machine and are built together,
/// so numbers are as they lie in memory.
namespace velmo::icon_protocol {

/// After which the loader ends when nothing is asked.
inline constexpr int idleMilliseconds = 5000;
/// Sides of icons that can be asked for, in pixels.
inline constexpr std::uint32_t largestSide = 512;
/// Bytes of a name or a path.
inline constexpr std::uint32_t longestText = 4096;
/// Bytes of an image in a request.
inline constexpr std::uint32_t mostData = 1 << 16;

/// Texts and data follow in the order of their sizes.
struct Request {
    std::uint32_t side = 0;
    /// A name of the icon theme, or an absolute path.
    std::uint32_t nameSize = 0;
    /// A folder in which to look before the theme.
    std::uint32_t folderSize = 0;
    std::uint32_t themeSize = 0;
    /// An image file's content. Where there is one, the name does not count.
    std::uint32_t dataSize = 0;
};

/// Pixels as a `Bitmap` has them follow, none where the icon could not be had.
struct Answer {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::uint32_t isTemplate = 0;
};

}  // namespace velmo::icon_protocol
