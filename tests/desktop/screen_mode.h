#pragma once

#include "child_process.h"

#include <string>
#include <vector>

namespace velmo::desktop {

/// Another resolution, in pixels, of an output of a private server; most have this one.
inline void requestScreenMode(int width, int height, const Environment& environment,
                              const std::string& output = "screen") {
    const auto name = std::to_string(width) + "x" + std::to_string(height) + "-test";
    std::vector<std::string> mode = {"xrandr", "--newmode", name, "60"};
    for (const int side : {width, height}) {
        for (const int blank : {0, 10, 20, 30})
            mode.push_back(std::to_string(side + blank));
    }
    outputOf(mode, environment);
    outputOf({"xrandr", "--addmode", output, name}, environment);
    outputOf({"xrandr", "--output", output, "--mode", name}, environment);
}

}  // namespace velmo::desktop
