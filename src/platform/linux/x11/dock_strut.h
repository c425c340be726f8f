#pragma once

#include "linux/x11/pixel_rect.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace velmo::x11 {

/// What a dock of another program has reserved for itself at three edges of the screen; the upper one is the
/// menu bar's.
struct DockStrut {
    /// Pixels from an edge of the root window, and from where to where along it, both inclusive.
    struct Edge {
        std::int64_t depth = 0;
        std::int64_t begin = 0;
        std::int64_t end = 0;

        bool meets(int place, int length) const {
            return begin < std::int64_t{place} + length && end >= place;
        }
    };

    Edge left;
    Edge right;
    Edge bottom;

    /// From the numbers of both forms in which docks say so, of which the older one has only depths. Absent
    /// where there are too few of both.
    static std::optional<DockStrut> from(const std::vector<std::uint32_t>& partial,
                                         const std::vector<std::uint32_t>& whole);
};

/// What docks leave of a monitor, in pixels of the root window.
PixelRect spaceLeftBy(const std::vector<DockStrut>& docks, const PixelRect& monitor, const PixelRect& root);

}  // namespace velmo::x11
