#pragma once

#include "display.h"

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace velmo::desktop {

struct Setup {
    /// The first items, of this kind, are hidden by those hosts that hide any.
    int hiddenItems = 0;
    Kind kind = Kind::tray;
    /// One that shows minutes.
    bool clock = false;
    /// What else is in Velmo's defaults file.
    nlohmann::json defaults = nlohmann::json::object();
};

inline bool isVelmo(const std::string& name) {
    return name == "Velmo";
}

/// A program that hosts items, set up so that it shows as little else as it can.
struct Host {
    std::string name;
    std::vector<std::string> command;
    bool takesBusItems = false;
    bool hasClock = false;
    /// It is the panel of a whole desktop.
    bool isLarge = false;
    /// Writes its settings into the display's home.
    void (*configure)(const Display& display, const Setup& setup);

    bool isVelmo() const { return desktop::isVelmo(name); }
    bool takes(Kind kind) const { return kind == Kind::tray || takesBusItems; }
};

/// Velmo, and those of its peers that are on this machine.
const std::vector<Host>& installedHosts();
/// The names of the others.
const std::vector<std::string>& missingHosts();
/// Null where it is not on this machine.
const Host* hostNamed(const std::string& name);

}  // namespace velmo::desktop
