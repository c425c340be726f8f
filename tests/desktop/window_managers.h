#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace velmo::desktop {

/// Those that Velmo is held to work with, by the names that `startWindowManagerNamed` knows.
inline const std::vector<std::string> windowManagerNames = {"openbox",  "i3",      "xfwm4",
                                                            "metacity", "fluxbox", "icewm"};
/// Each has another one after it.
inline std::string windowManagerAfter(const std::string& name) {
    const auto next = std::find(windowManagerNames.begin(), windowManagerNames.end(), name) + 1;
    return next == windowManagerNames.end() ? windowManagerNames.front() : *next;
}
inline const auto windowManagers = testing::ValuesIn(windowManagerNames);

}  // namespace velmo::desktop
