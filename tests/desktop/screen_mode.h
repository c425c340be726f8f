#pragma once

#include "child_process.h"

#include <string>
#include <vector>

namespace velmo::desktop {

/// Another resolution, in pixels, of the one output that a private server has.
inline void requestScreenMode(int width, int height, const Environment& environment) {
    const auto name = std::to_string(width) + "x" + std::to_string(height) + "-test";
    std::vector<std::string> mode = {"xrandr", "--newmode", name, "60"};
    for (const int side : {width, height}) {
        for (const int blank : {0, 10, 20, 30})
            mode.push_back(std::to_string(side + blank));
    }
    outputOf(mode, environment);
    outputOf({"xrandr", "--addmode", "screen", name}, environment);
    outputOf({"xrandr", "--output", "screen", "--mode", name}, environment);
}

}  // namespace velmo::desktop
