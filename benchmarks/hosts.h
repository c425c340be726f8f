#pragma once

#include "child_process.h"
#include "display.h"

#include <optional>
#include <string>
#include <vector>

namespace velmo::desktop {

/// A program that hosts the icons of a tray, set up so that it shows as little else as it can.
struct Host {
    std::string name;
    std::vector<std::string> command;
    /// Its settings, into the display's home. With `hiddenIcons` it has as many of them hidden, by `dock`'s
    /// numbers, where it knows such a thing.
    void (*configure)(const Display& display, int hiddenIcons);
};

/// Velmo, and those of its peers that are on this machine.
std::vector<Host> installedHosts();
/// Absent where it is not on this machine.
std::optional<Host> hostNamed(const std::string& name);

}  // namespace velmo::desktop
