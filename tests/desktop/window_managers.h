#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace velmo::desktop {

/// Those that Velmo is held to work with, by the names that `startWindowManagerNamed` knows.
inline const std::vector<std::string> windowManagerNames = {"openbox",  "i3",      "xfwm4",
                                                            "metacity", "fluxbox", "icewm"};
inline const auto windowManagers = testing::ValuesIn(windowManagerNames);

}  // namespace velmo::desktop
