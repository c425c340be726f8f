#pragma once

#include "geometry.h"

#include <optional>
#include <vector>

namespace velmo {

/// Frames in points, origin at the bottom left of the primary screen, y upwards.
struct Screen {
    Rect frame;
    /// The frame less the menu bar, and less what docks have at the other edges where the system tells of
    /// them.
    Rect visibleFrame;
    /// Pixels a point.
    double backingScaleFactor = 1;

    bool operator==(const Screen&) const = default;
};

class Screens {
public:
    virtual ~Screens() = default;

    /// The primary screen comes first. Empty while no screen is attached.
    virtual std::vector<Screen> all() const = 0;
    /// The screen that the user works on. Absent while no screen is attached.
    virtual std::optional<Screen> main() const = 0;
};

}  // namespace velmo
