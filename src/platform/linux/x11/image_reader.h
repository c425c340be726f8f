#pragma once

#include "linux/x11/connection.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace velmo::x11 {

/// Fetches the pixels of pixmaps: through memory that is shared with the server, where that is on the same
/// machine and lets us, else through the connection.
class ImageReader {
public:
    explicit ImageReader(Connection& connection) : connection_(connection) {}

    /// The pixels of a pixmap of 32 bits a pixel: rows from top to bottom without gaps, bytes in the order
    /// blue, green, red, alpha. Waits for the server once. Absent where it refuses.
    std::optional<std::vector<std::uint8_t>> read(xcb_pixmap_t pixmap, int width, int height);

private:
    bool canShareMemory() const;
    std::optional<std::vector<std::uint8_t>> readShared(xcb_pixmap_t pixmap, int width, int height) const;
    std::optional<std::vector<std::uint8_t>> readSent(xcb_pixmap_t pixmap, int width, int height) const;

    Connection& connection_;
    /// Absent until it was tried.
    std::optional<bool> sharesMemory_;
};

}  // namespace velmo::x11
