#pragma once

#include <gtest/gtest.h>

#include <string>

namespace velmo::desktop {

/// Those that Velmo is held to work with, by the names that `startWindowManagerNamed` knows.
inline const auto windowManagers =
    testing::Values<std::string, std::string, std::string, std::string, std::string, std::string>(
        "openbox", "i3", "xfwm4", "metacity", "fluxbox", "icewm");

}  // namespace velmo::desktop
