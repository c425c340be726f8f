#pragma once

#include "beside.h"
#include "x_observer.h"

#include <string>
#include <utility>
#include <vector>

namespace velmo::desktop {

/// What a part of the screen shows, looked at as often as can be.
class Film {
public:
    using Frame = std::vector<std::uint32_t>;

    /// The first frame is what is there now.
    Film(const std::string& display, const Area& area) : x_(display), area_(area), frames_{x_.pixels(area)} {}

    /// Ends it. The frames that differ from the one before them, each 0xRRGGBB row by row.
    const std::vector<Frame>& frames() {
        shots_.end();
        return frames_;
    }

private:
    void shoot() {
        auto frame = x_.pixels(area_);
        if (frames_.back() != frame)
            frames_.push_back(std::move(frame));
    }

    XObserver x_;
    Area area_;
    std::vector<Frame> frames_;
    Beside shots_{Beside::Times::untilTheEnd, [this] { shoot(); }};
};

}  // namespace velmo::desktop
