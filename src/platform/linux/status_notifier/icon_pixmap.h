#pragma once

#include "image.h"
#include "linux/dbus/message_reader.h"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace velmo::status_notifier {

/// A picture as an item sends it: 32-bit pixels in network byte order, opacity first, colours as they are.
struct IconPixmap {
    int width = 0;
    int height = 0;
    /// Lies in the message.
    std::span<const std::uint8_t> bytes;
};

/// No side of a pixmap is longer: a message has no room for larger ones.
inline constexpr int largestPixmapSide = 4096;

/// Reads the pixmaps that are what they say; others are left out.
std::vector<IconPixmap> readIconPixmaps(dbus::MessageReader& reader);

/// The one that looks best where `side` pixels are wanted: the smallest that is large enough, else the
/// largest. Null where there is none.
const IconPixmap* bestIconPixmap(const std::vector<IconPixmap>& pixmaps, int side);

/// The pixmap with `side` as its longer side; one that is nearly so large keeps its own size, and stays
/// sharp. It covers as many points as it has pixels.
Bitmap scaledIcon(const IconPixmap& pixmap, int side);

}  // namespace velmo::status_notifier
